#include "SaturationLine.h"

#include "LinearAlgebra.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

using Point = SaturationLine::Point;

namespace {

/// Relative, of the phases' volumes over b. Nearer to the critical point, one phase counted twice fulfils the
/// equations to the last digits at any vapour fraction.
constexpr double leastDifference = 1e-3;

double largest(const std::vector<double>& values) {
    double result = 0;
    for (double value : values)
        result = std::isnan(value) ? INFINITY : std::max(result, std::abs(value));
    return result;
}

} // namespace

SaturationLine::SaturationLine(const Mixture& mixture, double vaporFraction)
    : mixture_(mixture),
      vaporFraction_(vaporFraction),
      n_(mixture.count()),
      equation_(mixture.compounds, referenceTemperature),
      residual_(n_ + 2) {
    for (Side* side : {&vapor_, &liquid_}) {
        side->amounts.resize(n_);
        side->composition.resize(n_);
    }
}

void SaturationLine::Side::normalize() {
    std::ranges::transform(amounts, composition.begin(), [this](double amount) { return amount / total; });
}

/// The amounts of both phases by the point's K values.
void SaturationLine::divide(const Point& point) {
    vapor_.total = liquid_.total = 0;
    for (std::size_t i = 0; i < n_; ++i) {
        const double k = std::exp(point[i]);
        liquid_.amounts[i] = mixture_.composition[i] / (1 + vaporFraction_ * (k - 1));
        vapor_.amounts[i] = k * liquid_.amounts[i];
        liquid_.total += liquid_.amounts[i];
        vapor_.total += vapor_.amounts[i];
    }
}

SaturatedState SaturationLine::state(const Point& point) {
    evaluate(point);
    return {std::exp(point[n_]), std::exp(point[n_ + 1]), vapor_.composition, liquid_.composition};
}

Point SaturationLine::estimate(std::size_t held, double logValue) {
    constexpr int halvings = 16; // for a start of Newton's method
    Point point(n_ + 2);
    const std::size_t sought = held == n_ ? n_ + 1 : n_;
    double low = sought == n_ ? std::log(5.0) : -200;
    double high = sought == n_ ? std::log(5000.0) : 30;
    for (int i = 0; i < halvings; ++i) {
        point[held] = logValue;
        point[sought] = (low + high) / 2;
        const double temperature = std::exp(point[n_]);
        for (std::size_t k = 0; k < n_; ++k)
            point[k] =
                std::clamp(mixture_.volatilities[k].logarithm(temperature) - point[n_ + 1], -300.0, 300.0);
        divide(point);
        const bool tooVolatile = vapor_.total > liquid_.total;
        (tooVolatile == (sought == n_) ? high : low) = point[sought];
    }
    return point;
}

/// The residuals.
void SaturationLine::evaluate(const Point& point) {
    if (point == evaluated_)
        return;
    divide(point);
    equation_.setTemperature(std::exp(point[n_]));
    const double pressure = std::exp(point[n_ + 1]);
    vapor_.normalize();
    liquid_.normalize();
    vapor_.fugacity = equation_.fugacity(Root::vapor, pressure, vapor_.composition);
    liquid_.fugacity = equation_.fugacity(Root::liquid, pressure, liquid_.composition);
    for (std::size_t i = 0; i < n_; ++i)
        residual_[i] = point[i] + equation_.of(vapor_.fugacity.logCoefficient, i) -
                       equation_.of(liquid_.fugacity.logCoefficient, i);
    residual_[n_] = vapor_.total - liquid_.total;
    residual_[n_ + 1] = 0;
    evaluated_ = point;
}

/// The residuals' derivatives at the last point; those of the last row hold a variable.
void SaturationLine::differentiate(const Point& point, std::size_t held) {
    const std::size_t size = n_ + 2;
    const double pressure = std::exp(point[n_ + 1]);
    const FugacityDerivatives ofVapor = equation_.derivatives(vapor_.fugacity, pressure);
    const FugacityDerivatives ofLiquid = equation_.derivatives(liquid_.fugacity, pressure);
    jacobian_.assign(size * size, 0);
    const auto at = [&](std::size_t row, std::size_t column) -> double& {
        return jacobian_[row * size + column];
    };
    for (std::size_t j = 0; j < n_; ++j) {
        const double y = vapor_.amounts[j];
        const double x = liquid_.amounts[j];
        const double denominator = mixture_.composition[j] / x;
        const double xSlope = -vaporFraction_ * y / denominator;
        const double ySlope = (1 - vaporFraction_) * y / denominator;
        const CompoundNumbers byVapor = equation_.byMoles(ofVapor, j);
        const CompoundNumbers byLiquid = equation_.byMoles(ofLiquid, j);
        for (std::size_t i = 0; i < n_; ++i) {
            at(i, j) = equation_.of(byVapor, i) / vapor_.total * ySlope -
                       equation_.of(byLiquid, i) / liquid_.total * xSlope;
        }
        at(j, j) += 1;
        at(n_, j) = ySlope - xSlope;
        at(j, n_) = equation_.byLogTemperature(ofVapor, j) - equation_.byLogTemperature(ofLiquid, j);
        at(j, n_ + 1) = equation_.of(ofVapor.logPressure, j) - equation_.of(ofLiquid.logPressure, j);
    }
    at(n_ + 1, held) = 1;
}

/// Whether the phases of the last point are a vapour and a liquid.
bool SaturationLine::isOrdered() const {
    const Fugacity& vapor = vapor_.fugacity;
    const Fugacity& liquid = liquid_.fugacity;
    return vapor.volume / vapor.covolume > (1 + leastDifference) * liquid.volume / liquid.covolume &&
           vapor.volume > leastVaporVolumeRatio * vapor.covolume;
}

bool SaturationLine::correct(Point& point, std::size_t held, int& iterations) {
    constexpr int maxIterations = 60;
    double lastWorst = INFINITY;
    for (iterations = 0; iterations < maxIterations; ++iterations) {
        evaluate(point);
        const double worst = largest(residual_);
        // Newton's steps double the correct digits until rounding stops them.
        if (worst < 1e-14 || (worst < 1e-11 && worst >= lastWorst / 2))
            return isOrdered();
        lastWorst = worst;
        differentiate(point, held);
        step_ = residual_;
        if (!solveLinear(jacobian_, step_))
            return false;
        double length = 1;
        for (std::size_t i = 0; i < point.size(); ++i) {
            const double longest = i == temperatureIndex() ? 0.1 : 2.0;
            length = std::min(length, longest / std::abs(step_[i]));
        }
        if (!(largest(step_) < INFINITY))
            return false;
        for (std::size_t i = 0; i < point.size(); ++i)
            point[i] -= length * step_[i];
    }
    return false;
}

bool SaturationLine::tangent(const Point& point, std::size_t held, Point& direction) {
    evaluate(point);
    differentiate(point, held);
    direction.assign(n_ + 2, 0);
    direction[n_ + 1] = 1;
    return solveLinear(jacobian_, direction);
}

} // namespace solvane::host
