#include "SaturatedState.h"

#include "FlashVariables.h"
#include "Saturation.h"
#include "SaturationLine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>

namespace solvane::host {

using Point = SaturationLine::Point;

namespace {

struct Target {
    std::size_t index;
    double logValue;
};

/// Follows the line up from a point on it until it crosses the target, which `point` then is. `extreme` is
/// the furthest that it came, in the target's variable.
bool follow(const SaturationLine& line, Point& point, const Target& target, double& extreme) {
    constexpr int maxPoints = 400;
    constexpr double shortestStep = 1e-5;
    std::size_t held = line.pressureIndex();
    Point lastDirection;
    double stepLength = 0.5;
    extreme = point[target.index];
    for (int i = 0; i < maxPoints; ++i) {
        Point direction;
        if (!line.tangent(point, held, direction))
            return false;
        // The variable that changes fastest is held next; the line is never at a turning point for it.
        held = static_cast<std::size_t>(
            std::ranges::max_element(direction, {}, [](double d) { return std::abs(d); }) -
            direction.begin());
        const double fastest = std::abs(direction[held]);
        const double heading = lastDirection.empty() ? direction[line.pressureIndex()]
                                                     : std::inner_product(direction.begin(), direction.end(),
                                                                          lastDirection.begin(), 0.0);
        for (double& d : direction)
            d /= heading < 0 ? -fastest : fastest;
        lastDirection = direction;

        Point next;
        for (;; stepLength /= 2) {
            if (stepLength < shortestStep)
                return false;
            const double step = std::min(stepLength, 0.1 / std::abs(direction[line.temperatureIndex()]));
            next = point;
            for (std::size_t k = 0; k < next.size(); ++k)
                next[k] += step * direction[k];
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
            for (std::size_t k = 0; k < point.size(); ++k)
                point[k] += part * (next[k] - point[k]);
            point[target.index] = target.logValue;
            int iterations = 0;
            return line.correct(point, target.index, iterations);
        }
        point = std::move(next);
        extreme = std::max(extreme, point[target.index]);
    }
    return false;
}

/// Looks for the target's vapour fraction among stable states at ever higher pressures or lower temperatures:
/// a line that has its low end among states that would be two liquids cannot be followed from there.
bool search(const Mixture& mixture, const SaturationLine& line, const Target& target, Point& point) {
    constexpr int gridPoints = 100;
    constexpr int halvings = 30;
    constexpr double lowestPressure = 1;
    const std::size_t n = mixture.composition.size();
    const bool byTemperature = target.index == line.temperatureIndex();
    const double from = std::log(byTemperature ? lowestPressure : highestTemperature);
    const double to = std::log(byTemperature ? highestPressure : lowestTemperature);

    struct Sample {
        double position;
        bool isAbove; ///< has more vapour than is sought
        std::vector<PhaseState> phases;
    };
    const auto sample = [&](double position) {
        const double t = std::exp(byTemperature ? target.logValue : position);
        const double p = std::exp(byTemperature ? position : target.logValue);
        std::vector<PhaseState> phases = splitPhases(mixture, t, p);
        const bool vaporFirst = phases[0].phase == Phase::vapor;
        const bool isAbove = phases.size() == 1 ? vaporFirst : phases[0].fraction > line.vaporFraction();
        return Sample{position, isAbove, std::move(phases)};
    };

    Sample last = sample(from);
    for (int i = 1; i <= gridPoints; ++i) {
        Sample next = sample(from + i * (to - from) / gridPoints);
        Sample low = last;
        Sample high = next;
        last = std::move(next);
        if (low.isAbove == high.isAbove || low.phases.size() + high.phases.size() == 2)
            continue;
        for (int k = 0; k < halvings; ++k) {
            Sample middle = sample((low.position + high.position) / 2);
            (middle.isAbove == low.isAbove ? low : high) = std::move(middle);
        }
        const Sample& found = low.phases.size() == 2 ? low : high;
        if (found.phases.size() < 2)
            continue;
        point.resize(n + 2);
        for (std::size_t k = 0; k < n; ++k)
            point[k] = std::log(found.phases[0].composition[k] / found.phases[1].composition[k]);
        point[n + (byTemperature ? 0 : 1)] = target.logValue;
        point[n + (byTemperature ? 1 : 0)] = found.position;
        int iterations = 0;
        if (line.correct(point, target.index, iterations))
            return true;
    }
    return false;
}

bool pureAtVaporFraction(const Compound& compound, FlashVariable fixed, double value, SaturatedState& state,
                         std::string& error) {
    const bool byTemperature = fixed == FlashVariable::temperature;
    const std::optional<double> found =
        byTemperature ? vaporPressure(compound, value) : boilingTemperature(compound, value);
    if (!found) {
        error = byTemperature ? text(compound.name, " does not boil at ", value,
                                     " K: its critical temperature is ", compound.criticalTemperature, " K")
                              : text(compound.name, " does not boil at ", value,
                                     " Pa: its critical pressure is ", compound.criticalPressure, " Pa");
        return false;
    }
    state = {byTemperature ? value : *found, byTemperature ? *found : value, {1.0}, {1.0}};
    return true;
}

/// For two compounds or more.
bool findSaturatedState(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                        SaturatedState& state, std::string& error) {
    const SaturationLine line(mixture, vaporFraction);
    const bool byTemperature = fixed == FlashVariable::temperature;
    const Target target{byTemperature ? line.temperatureIndex() : line.pressureIndex(), std::log(value)};
    double extreme = -std::numeric_limits<double>::infinity();
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
        if (!line.correct(point, line.pressureIndex(), iterations))
            continue;
        if (follow(line, point, target, extreme)) {
            state = line.state(point);
            return true;
        }
        break;
    }

    Point point;
    if (search(mixture, line, target, point)) {
        state = line.state(point);
        return true;
    }

    const char* unit = byTemperature ? " K" : " Pa";
    error = text("no state with vapor fraction ", vaporFraction, " was found at ", value, unit);
    if (std::isfinite(extreme))
        error += text("; followed from low pressure, such states reach ", std::exp(extreme), unit);
    return false;
}

} // namespace

bool saturatedEquilibrium(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                          Equilibrium& result, std::string& error) {
    SaturatedState state;
    const bool found = mixture.compounds.size() == 1
                           ? pureAtVaporFraction(*mixture.compounds[0], fixed, value, state, error)
                           : findSaturatedState(mixture, vaporFraction, fixed, value, state, error);
    if (!found)
        return false;
    if (!checkCondition({FlashVariable::temperature, state.temperature}, error) ||
        !checkCondition({FlashVariable::pressure, state.pressure}, error)) {
        error = text("for vapor fraction ", vaporFraction, ", ", error);
        return false;
    }
    result = {state.temperature,
              state.pressure,
              {{Phase::vapor, vaporFraction, std::move(state.vapor)},
               {Phase::liquid, 1 - vaporFraction, std::move(state.liquid)}}};
    return true;
}

} // namespace solvane::host
