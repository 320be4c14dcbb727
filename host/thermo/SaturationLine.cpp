#include "SaturationLine.h"

#include "FlashVariables.h"
#include "LinearAlgebra.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace solvane::host {

namespace {

/// A point: ln K of each compound (K = y/x), ln T, ln P.
using Point = std::vector<double>;

/// The line and its equations: equal fugacities, and mole fractions of both phases that sum alike (M. L.
/// Michelsen, Fluid Phase Equilibria 4 (1980) 1).
class Line {
public:
    Line(const Mixture& mixture, double vaporFraction)
        : mixture_(mixture), vaporFraction_(vaporFraction), n_(mixture.composition.size()) {}

    std::size_t temperatureIndex() const { return n_; }
    std::size_t pressureIndex() const { return n_ + 1; }

    /// The point by Wilson's K values with the variable (T or P) held.
    Point estimate(std::size_t held, double logValue) const;

    /// Moves the point onto the line with one variable held where it is. False if it finds no way, or ends
    /// where the two phases are one or both are liquids.
    bool correct(Point& point, std::size_t held, int& iterations) const;

    /// How the variables of a point on the line change with the held one.
    bool tangent(const Point& point, std::size_t held, Point& direction) const;

    SaturatedState state(const Point& point) const;

    /// The vapour is the lighter phase, as it is up to the critical point.
    bool isOrdered(const Point& point) const;

private:
    void compositions(const Point& point, std::vector<double>& x, std::vector<double>& y) const;
    void equations(const Point& point, std::size_t held, std::vector<double>& residual,
                   std::vector<double>& jacobian) const;

    const Mixture& mixture_;
    double vaporFraction_;
    std::size_t n_;
};

double largest(const std::vector<double>& values) {
    double result = 0;
    for (double value : values) {
        result = std::isnan(value) ? INFINITY : std::max(result, std::abs(value));
    }
    return result;
}

void Line::compositions(const Point& point, std::vector<double>& x, std::vector<double>& y) const {
    x.resize(n_);
    y.resize(n_);
    for (std::size_t i = 0; i < n_; ++i) {
        const double k = std::exp(point[i]);
        x[i] = mixture_.composition[i] / (1 + vaporFraction_ * (k - 1));
        y[i] = k * x[i];
    }
}

SaturatedState Line::state(const Point& point) const {
    SaturatedState state{std::exp(point[n_]), std::exp(point[n_ + 1]), {}, {}};
    compositions(point, state.liquid, state.vapor);
    for (std::vector<double>* phase : {&state.liquid, &state.vapor}) {
        const double total = std::accumulate(phase->begin(), phase->end(), 0.0);
        std::ranges::for_each(*phase, [total](double& fraction) { fraction /= total; });
    }
    return state;
}

Point Line::estimate(std::size_t held, double logValue) const {
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

void Line::equations(const Point& point, std::size_t held, std::vector<double>& residual,
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

bool Line::isOrdered(const Point& point) const {
    const SaturatedState here = state(point);
    const PengRobinson equation(mixture_.compounds, here.temperature);
    const Fugacity vapor = equation.fugacity(Root::vapor, here.pressure, here.vapor);
    const Fugacity liquid = equation.fugacity(Root::liquid, here.pressure, here.liquid);
    return vapor.volume / vapor.covolume > (1 + 1e-6) * liquid.volume / liquid.covolume &&
           vapor.volume > leastVaporVolumeRatio * vapor.covolume;
}

bool Line::correct(Point& point, std::size_t held, int& iterations) const {
    constexpr int maxIterations = 40;
    std::vector<double> residual;
    std::vector<double> jacobian;
    double lastWorst = INFINITY;
    for (iterations = 0; iterations < maxIterations; ++iterations) {
        equations(point, held, residual, jacobian);
        const double worst = largest(residual);
        // Newton's steps double the digits until rounding ends their gain.
        if (worst < 1e-14 || (worst < 1e-11 && worst >= lastWorst / 2)) {
            return isOrdered(point);
        }
        lastWorst = worst;
        if (!solveLinear(std::move(jacobian), residual)) {
            return false;
        }
        double length = 1;
        for (std::size_t i = 0; i < point.size(); ++i) {
            const double longest = i == temperatureIndex() ? 0.1 : 2.0;
            length = std::min(length, longest / std::abs(residual[i]));
        }
        if (!(largest(residual) < INFINITY)) {
            return false;
        }
        for (std::size_t i = 0; i < point.size(); ++i) {
            point[i] -= length * residual[i];
        }
    }
    return false;
}

bool Line::tangent(const Point& point, std::size_t held, Point& direction) const {
    std::vector<double> residual;
    std::vector<double> jacobian;
    equations(point, held, residual, jacobian);
    direction.assign(n_ + 2, 0);
    direction[n_ + 1] = 1;
    return solveLinear(std::move(jacobian), direction);
}

struct Target {
    std::size_t index;
    double logValue;
};

/// Follows the line up from a point on it until it crosses the target, which `point` then is. `extreme` is
/// the furthest that it came, in the target's variable.
bool follow(const Line& line, Point& point, const Target& target, double& extreme) {
    constexpr int maxPoints = 400;
    constexpr double shortestStep = 1e-5;
    std::size_t held = line.pressureIndex();
    Point lastDirection;
    double stepLength = 0.5;
    extreme = point[target.index];
    for (int i = 0; i < maxPoints; ++i) {
        Point direction;
        if (!line.tangent(point, held, direction)) {
            return false;
        }
        // The variable that changes fastest is held next; the line is never at a turning point for it.
        held = static_cast<std::size_t>(
            std::ranges::max_element(direction, {}, [](double d) { return std::abs(d); }) -
            direction.begin());
        const double fastest = std::abs(direction[held]);
        const double heading = lastDirection.empty() ? direction[line.pressureIndex()]
                                                     : std::inner_product(direction.begin(), direction.end(),
                                                                          lastDirection.begin(), 0.0);
        for (double& d : direction) {
            d /= heading < 0 ? -fastest : fastest;
        }
        lastDirection = direction;

        Point next;
        for (;; stepLength /= 2) {
            if (stepLength < shortestStep) {
                return false;
            }
            const double step = std::min(stepLength, 0.1 / std::abs(direction[line.temperatureIndex()]));
            next = point;
            for (std::size_t k = 0; k < next.size(); ++k) {
                next[k] += step * direction[k];
            }
            int iterations = 0;
            if (line.correct(next, held, iterations) && iterations <= 8) {
                stepLength *= iterations <= 4 ? 1.5 : iterations >= 6 ? 0.7 : 1.0;
                stepLength = std::min(stepLength, 1.0);
                break;
            }
        }
        const double before = point[target.index] - target.logValue;
        const double after = next[target.index] - target.logValue;
        if (before * after <= 0) {
            const double part = before / (before - after);
            for (std::size_t k = 0; k < point.size(); ++k) {
                point[k] += part * (next[k] - point[k]);
            }
            point[target.index] = target.logValue;
            int iterations = 0;
            return line.correct(point, target.index, iterations);
        }
        point = std::move(next);
        extreme = std::max(extreme, point[target.index]);
    }
    return false;
}

} // namespace

bool findSaturatedState(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                        SaturatedState& state, std::string& error) {
    const Line line(mixture, vaporFraction);
    const bool byTemperature = fixed == FlashVariable::temperature;
    const Target target{byTemperature ? line.temperatureIndex() : line.pressureIndex(), std::log(value)};
    double extreme = -INFINITY;
    int iterations = 0;

    // Wilson's estimate is good enough only at low pressure. Above, the line has to be followed up there.
    constexpr std::array startPressures{1e5, 1e4, 1e6, 1e3};
    for (double startPressure : startPressures) {
        Point point = line.estimate(target.index, target.logValue);
        if (point[line.pressureIndex()] <= std::log(startPressure)) {
            if (line.correct(point, target.index, iterations)) {
                state = line.state(point);
                return true;
            }
            continue;
        }
        point = line.estimate(line.pressureIndex(), std::log(startPressure));
        if (!line.correct(point, line.pressureIndex(), iterations)) {
            continue;
        }
        double reached = -INFINITY;
        if (follow(line, point, target, reached)) {
            state = line.state(point);
            return true;
        }
        extreme = std::max(extreme, reached);
    }

    const char* unit = byTemperature ? " K" : " Pa";
    error = text("no state with vapor fraction ", vaporFraction, " was found at ", value, unit);
    if (std::isfinite(extreme)) {
        error += text(": the states of that fraction reach ", std::exp(extreme), unit);
    }
    return false;
}

} // namespace solvane::host
