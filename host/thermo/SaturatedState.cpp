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
#include <utility>

namespace solvane::host {

using Point = SaturationLine::Point;

namespace {

struct Target {
    std::size_t index;
    double logValue;
};

double distance(const Point& point, const Target& target) {
    return point[target.index] - target.logValue;
}

bool correct(SaturationLine& line, Point& point, std::size_t held) {
    int iterations = 0;
    return line.correct(point, held, iterations);
}

/// A walk up the line from a point on it.
class Walk {
public:
    Walk(SaturationLine& line, Point start)
        : line_(line), point_(std::move(start)), held_(line.pressureIndex()) {}

    /// Follows the line until it crosses the target, and moves `point` there. `extreme` is the largest value
    /// of the target's variable on the way.
    bool follow(const Target& target, Point& point, double& extreme) {
        constexpr int maxPoints = 400;
        extreme = point_[target.index];
        for (int i = 0; i < maxPoints; ++i) {
            Point next;
            if (!turn() || !step(next))
                return false;
            if (distance(point_, target) * distance(next, target) <= 0) {
                point = between(point_, next, target);
                return correct(line_, point, target.index);
            }
            point_ = std::move(next);
            extreme = std::max(extreme, point_[target.index]);
        }
        return false;
    }

private:
    /// Points the direction onwards, and holds the variable that changes fastest: the line never turns back
    /// in that one.
    bool turn() {
        Point direction;
        if (!line_.tangent(point_, held_, direction))
            return false;
        held_ = static_cast<std::size_t>(
            std::ranges::max_element(direction, {}, [](double d) { return std::abs(d); }) -
            direction.begin());
        const double fastest = std::abs(direction[held_]);
        const double heading = direction_.empty() ? direction[line_.pressureIndex()]
                                                  : std::inner_product(direction.begin(), direction.end(),
                                                                       direction_.begin(), 0.0);
        for (double& d : direction)
            d /= heading < 0 ? -fastest : fastest;
        direction_ = std::move(direction);
        return true;
    }

    /// Finds the next point, with steps that adapt to the iterations that it costs.
    bool step(Point& next) {
        constexpr double shortestStep = 1e-5;
        for (; stepLength_ >= shortestStep; stepLength_ /= 2) {
            const double step = std::min(stepLength_, 0.1 / std::abs(direction_[line_.temperatureIndex()]));
            next = point_;
            for (std::size_t k = 0; k < next.size(); ++k)
                next[k] += step * direction_[k];
            int iterations = 0;
            if (line_.correct(next, held_, iterations) && iterations <= 8) {
                stepLength_ *= iterations <= 4 ? 1.5 : iterations >= 6 ? 0.7 : 1.0;
                stepLength_ = std::min(stepLength_, 1.0);
                return true;
            }
        }
        return false;
    }

    static Point between(Point point, const Point& next, const Target& target) {
        const double before = distance(point, target);
        const double part = before / (before - distance(next, target));
        for (std::size_t k = 0; k < point.size(); ++k)
            point[k] += part * (next[k] - point[k]);
        point[target.index] = target.logValue;
        return point;
    }

    SaturationLine& line_;
    Point point_;
    std::size_t held_;
    Point direction_; ///< empty before the first turn
    double stepLength_ = 0.5;
};

/// The search for the target's vapour fraction among stable states at ever higher pressures or lower
/// temperatures: a line whose low end lies among states that would be two liquids cannot be followed from
/// there.
class Scan {
public:
    Scan(const Mixture& mixture, SaturationLine& line, const Target& target)
        : count_(mixture.count()),
          splitter_(mixture),
          line_(line),
          target_(target),
          byTemperature_(target.index == line.temperatureIndex()) {}

    bool find(Point& point) {
        constexpr int gridPoints = 100;
        constexpr double lowestPressure = 1;
        const double from = std::log(byTemperature_ ? lowestPressure : highestTemperature);
        const double to = std::log(byTemperature_ ? highestPressure : lowestTemperature);
        Sample last = sample(from);
        for (int i = 1; i <= gridPoints; ++i) {
            Sample next = sample(from + i * (to - from) / gridPoints);
            const bool crosses = last.isAbove != next.isAbove && last.phases.size() + next.phases.size() > 2;
            const Sample low = std::exchange(last, std::move(next));
            if (crosses && pointBetween(low, last, point) && correct(line_, point, target_.index))
                return true;
        }
        return false;
    }

private:
    struct Sample {
        double position; ///< logarithm of the variable that is not the target's
        bool isAbove;    ///< has more vapour than the target
        std::vector<PhaseState> phases;
    };

    Sample sample(double position) {
        const double t = std::exp(byTemperature_ ? target_.logValue : position);
        const double p = std::exp(byTemperature_ ? position : target_.logValue);
        std::vector<PhaseState> phases = splitter_.split(t, p);
        const bool vaporFirst = phases[0].phase == Phase::vapor;
        const bool isAbove = phases.size() == 1 ? vaporFirst : phases[0].fraction > line_.vaporFraction();
        return {position, isAbove, std::move(phases)};
    }

    /// Halves the way between two samples. False if neither of the last two has two phases.
    bool pointBetween(Sample low, Sample high, Point& point) {
        constexpr int halvings = 30;
        for (int k = 0; k < halvings; ++k) {
            Sample middle = sample((low.position + high.position) / 2);
            (middle.isAbove == low.isAbove ? low : high) = std::move(middle);
        }
        const Sample& found = low.phases.size() == 2 ? low : high;
        if (found.phases.size() < 2)
            return false;
        point.resize(count_ + 2);
        for (std::size_t k = 0; k < count_; ++k)
            point[k] = std::log(found.phases[0].composition[k] / found.phases[1].composition[k]);
        point[target_.index] = target_.logValue;
        point[byTemperature_ ? line_.pressureIndex() : line_.temperatureIndex()] = found.position;
        return true;
    }

    std::size_t count_;
    PhaseSplitter splitter_;
    SaturationLine& line_;
    Target target_;
    bool byTemperature_;
};

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

/// Follows the line up from low pressure, where Wilson's estimate is good enough to start.
bool followLine(SaturationLine& line, const Target& target, Point& point, double& extreme) {
    constexpr std::array startPressures{1e5, 1e4, 1e6, 1e3};
    for (const double startPressure : startPressures) {
        point = line.estimate(target.index, target.logValue);
        if (point[line.pressureIndex()] <= std::log(startPressure)) {
            if (correct(line, point, target.index))
                return true;
            continue;
        }
        point = line.estimate(line.pressureIndex(), std::log(startPressure));
        if (correct(line, point, line.pressureIndex()))
            return Walk(line, point).follow(target, point, extreme);
    }
    return false;
}

/// For two compounds or more.
bool findSaturatedState(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                        SaturatedState& state, std::string& error) {
    SaturationLine line(mixture, vaporFraction);
    const bool byTemperature = fixed == FlashVariable::temperature;
    const Target target{byTemperature ? line.temperatureIndex() : line.pressureIndex(), std::log(value)};
    Point point;
    double extreme = -std::numeric_limits<double>::infinity();
    if (followLine(line, target, point, extreme) || Scan(mixture, line, target).find(point)) {
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
