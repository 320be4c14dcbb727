#include "SaturationLine.h"

#include "LinearAlgebra.h"

#include <algorithm>
#include <cmath>
#include <numeric>

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

void SaturationLine::compositions(const Point& point, std::vector<double>& x, std::vector<double>& y) const {
    x.resize(n_);
    y.resize(n_);
    for (std::size_t i = 0; i < n_; ++i) {
        const double k = std::exp(point[i]);
        x[i] = mixture_.composition[i] / (1 + vaporFraction_ * (k - 1));
        y[i] = k * x[i];
    }
}

SaturatedState SaturationLine::state(const Point& point) const {
    SaturatedState state{std::exp(point[n_]), std::exp(point[n_ + 1]), {}, {}};
    compositions(point, state.liquid, state.vapor);
    for (std::vector<double>* phase : {&state.liquid, &state.vapor}) {
        const double total = std::accumulate(phase->begin(), phase->end(), 0.0);
        std::ranges::for_each(*phase, [total](double& fraction) { fraction /= total; });
    }
    return state;
}

Point SaturationLine::estimate(std::size_t held, double logValue) const {
    Point point(n_ + 2);
    std::vector<double> x;
    std::vector<double> y;
    const std::size_t sought = held == n_ ? n_ + 1 : n_;
    double low = sought == n_ ? std::log(5.0) : -200;
    double high = sought == n_ ? std::log(5000.0) : 30;
    for (int i = 0; i < 60; ++i) {
        point[held] = logValue;
        point[sought] = (low + high) / 2;
        for (std::size_t k = 0; k < n_; ++k) {
            point[k] = wilsonLogVolatility(*mixture_.compounds[k], std::exp(point[n_])) - point[n_ + 1];
            point[k] = std::clamp(point[k], -300.0, 300.0);
        }
        compositions(point, x, y);
        const double excess =
            std::accumulate(y.begin(), y.end(), 0.0) - std::accumulate(x.begin(), x.end(), 0.0);
        const bool tooVolatile = excess > 0;
        (tooVolatile == (sought == n_) ? high : low) = point[sought];
    }
    return point;
}

void SaturationLine::equations(const Point& point, std::size_t held, std::vector<double>& residual,
                               std::vector<double>& jacobian) const {
    const std::size_t size = n_ + 2;
    std::vector<double> x;
    std::vector<double> y;
    compositions(point, x, y);
    const SaturatedState here = state(point);
    const double xTotal = std::accumulate(x.begin(), x.end(), 0.0);
    const double yTotal = std::accumulate(y.begin(), y.end(), 0.0);

    const PengRobinson equation(mixture_.compounds, here.temperature);
    FugacityDerivatives byVapor;
    FugacityDerivatives byLiquid;
    const Fugacity vapor = equation.fugacity(Root::vapor, here.pressure, here.vapor, &byVapor);
    const Fugacity liquid = equation.fugacity(Root::liquid, here.pressure, here.liquid, &byLiquid);

    residual.assign(size, 0);
    jacobian.assign(size * size, 0);
    const auto at = [&](std::size_t row, std::size_t column) -> double& {
        return jacobian[row * size + column];
    };
    for (std::size_t j = 0; j < n_; ++j) {
        const double denominator = 1 + vaporFraction_ * (std::exp(point[j]) - 1);
        const double xSlope = -vaporFraction_ * y[j] / denominator;
        const double ySlope = (1 - vaporFraction_) * y[j] / denominator;
        for (std::size_t i = 0; i < n_; ++i) {
            at(i, j) =
                byVapor.moles[i * n_ + j] / yTotal * ySlope - byLiquid.moles[i * n_ + j] / xTotal * xSlope;
        }
        at(j, j) += 1;
        at(n_, j) = ySlope - xSlope;
    }
    for (std::size_t i = 0; i < n_; ++i) {
        residual[i] = point[i] + vapor.logCoefficient[i] - liquid.logCoefficient[i];
        at(i, n_) = byVapor.logTemperature[i] - byLiquid.logTemperature[i];
        at(i, n_ + 1) = byVapor.logPressure[i] - byLiquid.logPressure[i];
    }
    residual[n_] = yTotal - xTotal;
    at(n_ + 1, held) = 1;
}

bool SaturationLine::isOrdered(const Point& point) const {
    const SaturatedState here = state(point);
    const PengRobinson equation(mixture_.compounds, here.temperature);
    const Fugacity vapor = equation.fugacity(Root::vapor, here.pressure, here.vapor);
    const Fugacity liquid = equation.fugacity(Root::liquid, here.pressure, here.liquid);
    return vapor.volume / vapor.covolume > (1 + leastDifference) * liquid.volume / liquid.covolume &&
           vapor.volume > leastVaporVolumeRatio * vapor.covolume;
}

bool SaturationLine::correct(Point& point, std::size_t held, int& iterations) const {
    constexpr int maxIterations = 40;
    std::vector<double> residual;
    std::vector<double> jacobian;
    double lastWorst = INFINITY;
    for (iterations = 0; iterations < maxIterations; ++iterations) {
        equations(point, held, residual, jacobian);
        const double worst = largest(residual);
        // Newton's steps double the correct digits until rounding stops them.
        if (worst < 1e-14 || (worst < 1e-11 && worst >= lastWorst / 2))
            return isOrdered(point);
        lastWorst = worst;
        if (!solveLinear(std::move(jacobian), residual))
            return false;
        double length = 1;
        for (std::size_t i = 0; i < point.size(); ++i) {
            const double longest = i == temperatureIndex() ? 0.1 : 2.0;
            length = std::min(length, longest / std::abs(residual[i]));
        }
        if (!(largest(residual) < INFINITY))
            return false;
        for (std::size_t i = 0; i < point.size(); ++i)
            point[i] -= length * residual[i];
    }
    return false;
}

bool SaturationLine::tangent(const Point& point, std::size_t held, Point& direction) const {
    std::vector<double> residual;
    std::vector<double> jacobian;
    equations(point, held, residual, jacobian);
    direction.assign(n_ + 2, 0);
    direction[n_ + 1] = 1;
    return solveLinear(std::move(jacobian), direction);
}

} // namespace solvane::host
