#include "PropertyFlash.h"

#include "FlashVariables.h"
#include "SaturatedState.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

namespace solvane::host {

namespace {

/// A state on the path that a search goes along.
struct Sample {
    Equilibrium state;
    double place;
    double difference; ///< property less the value that is sought
};

/// Nothing where the path has no state.
using Path = std::function<std::optional<Sample>(double place)>;

/// Parts of two states of (but for rounding) equal temperature and pressure, put together.
Equilibrium blend(const Equilibrium& low, const Equilibrium& high, double highShare) {
    Equilibrium result{low.temperature, low.pressure, {}};
    for (Phase phase : {Phase::vapor, Phase::liquid}) {
        PhaseState sum{phase, 0, {}};
        for (const auto& [state, share] : {std::pair(&low, 1 - highShare), std::pair(&high, highShare)}) {
            for (const PhaseState& part : state->phases) {
                if (part.phase != phase)
                    continue;
                const double amount = share * part.fraction;
                sum.composition.resize(part.composition.size());
                for (std::size_t i = 0; i < part.composition.size(); ++i)
                    sum.composition[i] += amount * part.composition[i];
                sum.fraction += amount;
            }
        }
        if (sum.fraction > 0) {
            std::ranges::for_each(sum.composition, [&](double& fraction) { fraction /= sum.fraction; });
            result.phases.push_back(std::move(sum));
        }
    }
    return result;
}

/// Narrows [low, high], whose differences differ in sign, to neighbouring places or to a state that has the
/// value: inverse quadratic interpolation where it may be trusted, else bisection (T. R. Chandrupatla,
/// Advances in Engineering Software 28 (1997) 145). A jump, as where a pure compound boils, costs bisections.
bool narrow(Sample& low, Sample& high, double tolerance, const Path& path) {
    Sample newest = low;
    Sample opposite = high;
    Sample third = high;
    double part = 0.5;
    for (int i = 0; i < 200 && std::abs(newest.difference) > tolerance; ++i) {
        const double from = newest.place;
        const double to = opposite.place;
        const double spacing = 2e-16 * std::max(1.0, std::abs(from));
        if (std::abs(to - from) <= 2 * spacing)
            break;
        std::optional<Sample> found = path(from + part * (to - from));
        if (!found)
            return false;
        Sample sample = std::move(*found);
        if ((sample.difference > 0) == (newest.difference > 0)) {
            third = std::move(newest);
        } else {
            third = std::move(opposite);
            opposite = std::move(newest);
        }
        newest = std::move(sample);

        const double a = newest.place;
        const double b = opposite.place;
        const double c = third.place;
        const double fa = newest.difference;
        const double fb = opposite.difference;
        const double fc = third.difference;
        const double xi = (a - b) / (c - b);
        const double phi = (fa - fb) / (fc - fb);
        if (phi * phi < xi && (1 - phi) * (1 - phi) < 1 - xi)
            part = fa / (fb - fa) * fc / (fb - fc) + (c - a) / (b - a) * fa / (fc - fa) * fb / (fc - fb);
        else
            part = 0.5;
        const double least = std::min(0.5, spacing / std::abs(b - a));
        part = std::clamp(part, least, 1 - least);
    }
    const bool newestIsLow = newest.place < opposite.place;
    low = newestIsLow ? newest : opposite;
    high = newestIsLow ? std::move(opposite) : std::move(newest);
    return true;
}

} // namespace

double overallProperty(const Mixture& mixture, const Equilibrium& state, double MolarProperties::*property) {
    double sum = 0;
    for (const PhaseState& phase : state.phases) {
        sum += phase.fraction * (molarProperties<double>(mixture.compounds, phase.phase, state.temperature,
                                                         state.pressure, phase.composition).*
                                 property);
    }
    return sum;
}

namespace {

/// The state of two neighbours that has the value, or parts of both, as where a pure compound boils. False
/// where parts of both do not have it: then the states jump there, as where a second liquid is missing.
bool take(const Mixture& mixture, const Sample& low, const Sample& high, const GivenProperty& given,
          double tolerance, Equilibrium& result) {
    const Sample& nearer = std::abs(low.difference) < std::abs(high.difference) ? low : high;
    const double jump = high.difference - low.difference;
    Equilibrium parts = blend(low.state, high.state, -low.difference / jump);
    const double miss = std::abs(overallProperty(mixture, parts, given.property) - given.value);
    if (std::abs(nearer.difference) > tolerance && miss <= 1e-6 * std::abs(jump)) {
        result = std::move(parts);
        return true;
    }
    // Close to a critical point neighbouring states are apart by more than the tolerance.
    if (std::abs(nearer.difference) > 1e3 * tolerance)
        return false;
    result = nearer.state;
    return true;
}

/// Follows a path upwards from place to place until the difference changes its sign, be it only between two
/// places: where the last three show that it turns back, its extremum is looked at too.
class Search {
public:
    Search(const Mixture& mixture, const Path& path, const GivenProperty& given)
        : mixture_(mixture), path_(path), given_(given) {}

    bool find(const std::vector<double>& places, Equilibrium& result, std::string& error) {
        for (double place : places) {
            if (std::optional<Sample> sample = path_(place)) {
                if (reaches(*std::move(sample), result))
                    return true;
            } else if (last_ && goToTheEnd(place, result)) {
                return true;
            }
        }
        error = least_ > greatest_ ? "there are no such states"
                : jumps_           ? text("falls where the states jump, within ", least_, " to ", greatest_)
                                   : text("lies outside ", least_, " to ", greatest_);
        return false;
    }

private:
    /// Goes on to the next state. True where one that has the value lies between the last two and this.
    bool reaches(Sample next, Equilibrium& result) {
        note(next);
        if (last_ && (changesSign(*last_, next) ? liesBetween(*last_, next, result)
                                                : former_ && liesAtExtremum(next, result)))
            return true;
        former_ = std::exchange(last_, std::move(next));
        return false;
    }

    void note(const Sample& sample) {
        least_ = std::min(least_, sample.difference + given_.value);
        greatest_ = std::max(greatest_, sample.difference + given_.value);
    }

    static bool changesSign(const Sample& one, const Sample& other) {
        return (one.difference > 0) != (other.difference > 0);
    }

    double tolerance() const {
        // Volumes go over many decades.
        return 1e-12 * (given_.property == &MolarProperties::volume ? given_.value : greatest_ - least_);
    }

    bool liesBetween(Sample low, Sample high, Equilibrium& result) {
        const double allowed = tolerance();
        if (narrow(low, high, allowed, path_) && take(mixture_, low, high, given_, allowed, result))
            return true;
        jumps_ = true;
        return false;
    }

    /// Whether the difference, which has one sign at the last two states and the next, turns back between
    /// them, and has reached 0 by then. By golden section.
    bool liesAtExtremum(const Sample& next, Equilibrium& result) {
        const auto size = [](const Sample& sample) { return std::abs(sample.difference); };
        Sample low = *former_, nearest = *last_, high = next;
        if (size(nearest) >= size(low) || size(nearest) >= size(high))
            return false;
        constexpr double goldenPart = 0.381966011250105;
        constexpr double closest = 1e-8; // the extremum itself is then found to rounding
        while (high.place - low.place > closest * std::max(1.0, std::abs(nearest.place))) {
            const bool goesUp = high.place - nearest.place > nearest.place - low.place;
            Sample& end = goesUp ? high : low;
            std::optional<Sample> sample = path_(nearest.place + goldenPart * (end.place - nearest.place));
            if (!sample)
                return false;
            note(*sample);
            if (changesSign(*sample, nearest))
                return goesUp ? liesBetween(nearest, *std::move(sample), result)
                              : liesBetween(low, *std::move(sample), result);
            if (size(*sample) < size(nearest))
                (goesUp ? low : high) = std::exchange(nearest, *std::move(sample));
            else
                end = *std::move(sample);
        }
        if (size(nearest) > tolerance())
            return false;
        result = std::move(nearest.state);
        return true;
    }

    /// Goes on to where the path ends before `beyond`, as at a critical point. Each halving that finds a
    /// state is the next of them, so they crowd at the end, where properties turn quickly.
    bool goToTheEnd(double beyond, Equilibrium& result) {
        for (int i = 0; i < 40 && isWorthGoing(beyond - last_->place); ++i) {
            const double middle = (last_->place + beyond) / 2;
            std::optional<Sample> sample = path_(middle);
            if (!sample)
                beyond = middle;
            else if (reaches(*std::move(sample), result))
                return true;
        }
        last_.reset();
        former_.reset();
        return false;
    }

    /// Whether states this near may have the value, or the bounds that an error tells are still rough. Close
    /// to a critical point properties change with the square root of the distance from it, elsewhere less.
    bool isWorthGoing(double distance) const {
        if (!former_)
            return true;
        constexpr double safety = 10;
        constexpr double rough = 1e-2;
        const double change = std::abs(last_->difference - former_->difference) *
                              std::sqrt(distance / (last_->place - former_->place));
        return std::abs(last_->difference) < safety * change || change > rough * (greatest_ - least_);
    }

    const Mixture& mixture_;
    const Path& path_;
    GivenProperty given_;
    std::optional<Sample> former_; ///< before the last
    std::optional<Sample> last_;
    double least_ = std::numeric_limits<double>::infinity();
    double greatest_ = -std::numeric_limits<double>::infinity();
    bool jumps_ = false;
};

std::vector<double> evenPlaces(double first, double last, int steps) {
    std::vector<double> places;
    for (int i = 0; i <= steps; ++i)
        places.push_back(first + (last - first) * i / steps);
    return places;
}

/// The path of the stable states at a temperature and a pressure that follow from the place.
template <typename Conditions>
Path stableStates(const Mixture& mixture, const GivenProperty& given, const Conditions& conditions) {
    return [&mixture, given, conditions](double place) {
        const auto [temperature, pressure] = conditions(place);
        Equilibrium state{temperature, pressure, splitPhases(mixture, temperature, pressure)};
        const double difference = overallProperty(mixture, state, given.property) - given.value;
        return Sample{std::move(state), place, difference};
    };
}

} // namespace

bool flashAtPressure(const Mixture& mixture, double pressure, const GivenProperty& given, Equilibrium& result,
                     std::string& error) {
    const Path path = stableStates(mixture, given, [=](double t) { return std::pair(t, pressure); });
    if (Search(mixture, path, given).find({lowestTemperature, highestTemperature}, result, error))
        return true;
    error = text("at ", pressure, " Pa ", error, ", the values from ", lowestTemperature, " K to ",
                 highestTemperature, " K");
    return false;
}

bool flashAtTemperature(const Mixture& mixture, double temperature, const GivenProperty& given,
                        Equilibrium& result, std::string& error) {
    constexpr double lowestPressure = 1e-3;
    // Enthalpy falls and rises again with pressure: a few steps a decade show both ways.
    constexpr int steps = 60;
    const Path path = stableStates(
        mixture, given, [=](double logarithm) { return std::pair(temperature, std::exp(logarithm)); });
    if (Search(mixture, path, given)
            .find(evenPlaces(std::log(lowestPressure), std::log(highestPressure), steps), result, error))
        return true;
    error = text("at ", temperature, " K ", error, ", the values from ", lowestPressure, " Pa to ",
                 highestPressure, " Pa");
    return false;
}

bool flashAtVaporFraction(const Mixture& mixture, double vaporFraction, const GivenProperty& given,
                          Equilibrium& result, std::string& error) {
    const Path path = [&](double logarithm) -> std::optional<Sample> {
        Equilibrium state;
        std::string ignored;
        if (!saturatedEquilibrium(mixture, vaporFraction, FlashVariable::temperature, std::exp(logarithm),
                                  state, ignored))
            return std::nullopt;
        const double difference = overallProperty(mixture, state, given.property) - given.value;
        return Sample{std::move(state), logarithm, difference};
    };
    const auto hottest = std::ranges::max(mixture.compounds, {}, &Compound::criticalTemperature);
    constexpr int steps = 60;
    if (Search(mixture, path, given)
            .find(
                evenPlaces(std::log(lowestTemperature), std::log(1.1 * hottest->criticalTemperature), steps),
                result, error))
        return true;
    error = text("at vapor fraction ", vaporFraction, " ", error, ", the values up to the critical point");
    return false;
}

} // namespace solvane::host
