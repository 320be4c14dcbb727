#include "PathSearch.h"

#include "FlashVariables.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace solvane::host {

namespace {

double overallProperty(const Mixture& mixture, const Equilibrium& state, double MolarProperties::* property) {
    double sum = 0;
    for (const PhaseState& phase : state.phases) {
        sum += phase.fraction * (molarProperties<double>(mixture.compounds, phase.phase, state.temperature,
                                                         state.pressure, phase.composition).*
                                 property);
    }
    return sum;
}

/// Adds a share of each phase of that kind to the sum.
void addShare(PhaseState& sum, const Equilibrium& state, double share) {
    for (const PhaseState& part : state.phases) {
        if (part.phase != sum.phase)
            continue;
        const double amount = share * part.fraction;
        sum.composition.resize(part.composition.size());
        for (std::size_t i = 0; i < part.composition.size(); ++i)
            sum.composition[i] += amount * part.composition[i];
        sum.fraction += amount;
    }
}

/// Mixes shares of two states whose temperatures and pressures are equal except for rounding.
Equilibrium blend(const Equilibrium& low, const Equilibrium& high, double highShare) {
    Equilibrium result{low.temperature, low.pressure, {}};
    for (Phase phase : {Phase::vapor, Phase::liquid}) {
        PhaseState sum{phase, 0, {}};
        addShare(sum, low, 1 - highShare);
        addShare(sum, high, highShare);
        if (sum.fraction > 0) {
            std::ranges::for_each(sum.composition, [&](double& fraction) { fraction /= sum.fraction; });
            result.phases.push_back(std::move(sum));
        }
    }
    return result;
}

} // namespace

bool PathSearch::find(const std::vector<double>& places, Equilibrium& result, std::string& error) {
    for (const double place : places) {
        if (std::optional<Sample> sample = sampleAt(place)) {
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

std::optional<PathSearch::Sample> PathSearch::sampleAt(double place) const {
    std::optional<Equilibrium> state = path_(place);
    if (!state)
        return std::nullopt;
    const double difference = overallProperty(mixture_, *state, given_.property) - given_.value;
    return Sample{*std::move(state), place, difference};
}

/// Goes on to the next state. True if a state with the value lies between the last two and this one.
bool PathSearch::reaches(Sample next, Equilibrium& result) {
    note(next);
    if (last_ && (changesSign(*last_, next) ? liesBetween(*last_, next, result)
                                            : former_ && liesAtExtremum(next, result)))
        return true;
    former_ = std::exchange(last_, std::move(next));
    return false;
}

void PathSearch::note(const Sample& sample) {
    least_ = std::min(least_, sample.difference + given_.value);
    greatest_ = std::max(greatest_, sample.difference + given_.value);
}

bool PathSearch::changesSign(const Sample& one, const Sample& other) {
    return (one.difference > 0) != (other.difference > 0);
}

double PathSearch::tolerance() const {
    // Volumes span many decades.
    return 1e-12 * (given_.property == &MolarProperties::volume ? given_.value : greatest_ - least_);
}

bool PathSearch::liesBetween(Sample low, Sample high, Equilibrium& result) {
    if (narrow(low, high) && take(low, high, result))
        return true;
    jumps_ = true;
    return false;
}

/// Narrows [low, high], whose differences differ in sign, to neighbouring places or to a state that has the
/// value: inverse quadratic interpolation where it can be trusted, otherwise bisection (T. R. Chandrupatla,
/// Advances in Engineering Software 28 (1997) 145). A jump, as where a pure compound boils, costs bisections.
bool PathSearch::narrow(Sample& low, Sample& high) const {
    Sample newest = low;
    Sample opposite = high;
    Sample third = high;
    double part = 0.5;
    for (int i = 0; i < 200 && std::abs(newest.difference) > tolerance(); ++i) {
        const double from = newest.place;
        const double to = opposite.place;
        const double spacing = 2e-16 * std::max(1.0, std::abs(from));
        if (std::abs(to - from) <= 2 * spacing)
            break;
        std::optional<Sample> sample = sampleAt(from + part * (to - from));
        if (!sample)
            return false;
        if (changesSign(*sample, newest)) {
            third = std::move(opposite);
            opposite = std::move(newest);
        } else {
            third = std::move(newest);
        }
        newest = *std::move(sample);
        const double least = std::min(0.5, spacing / std::abs(opposite.place - newest.place));
        part = std::clamp(interpolatedPart(newest, opposite, third), least, 1 - least);
    }
    const bool newestIsLow = newest.place < opposite.place;
    low = newestIsLow ? newest : opposite;
    high = newestIsLow ? std::move(opposite) : std::move(newest);
    return true;
}

/// The next place, as a part of the way from the newest to the opposite one.
double PathSearch::interpolatedPart(const Sample& newest, const Sample& opposite, const Sample& third) {
    const double a = newest.place;
    const double b = opposite.place;
    const double c = third.place;
    const double fa = newest.difference;
    const double fb = opposite.difference;
    const double fc = third.difference;
    const double xi = (a - b) / (c - b);
    const double phi = (fa - fb) / (fc - fb);
    if (phi * phi < xi && (1 - phi) * (1 - phi) < 1 - xi)
        return fa / (fb - fa) * fc / (fb - fc) + (c - a) / (b - a) * fa / (fc - fa) * fb / (fc - fb);
    return 0.5;
}

/// Takes the one of two neighbours that has the value, or a blend of both, as where a pure compound boils.
/// False if no blend has it: the states jump there, as where a second liquid is missing.
bool PathSearch::take(const Sample& low, const Sample& high, Equilibrium& result) const {
    const Sample& nearer = std::abs(low.difference) < std::abs(high.difference) ? low : high;
    const double jump = high.difference - low.difference;
    Equilibrium parts = blend(low.state, high.state, -low.difference / jump);
    const double miss = std::abs(overallProperty(mixture_, parts, given_.property) - given_.value);
    if (std::abs(nearer.difference) > tolerance() && miss <= 1e-6 * std::abs(jump)) {
        result = std::move(parts);
        return true;
    }
    // Close to a critical point neighbouring states differ by more than the tolerance.
    if (std::abs(nearer.difference) > 1e3 * tolerance())
        return false;
    result = nearer.state;
    return true;
}

/// Whether the difference, which has one sign at the last two states and the next, reaches 0 and turns back
/// between them. Golden-section search.
bool PathSearch::liesAtExtremum(const Sample& next, Equilibrium& result) {
    const auto size = [](const Sample& sample) { return std::abs(sample.difference); };
    Sample low = *former_, nearest = *last_, high = next;
    if (size(nearest) >= size(low) || size(nearest) >= size(high))
        return false;
    constexpr double goldenPart = 0.381966011250105;
    constexpr double closest = 1e-8; // finds the extremum itself to rounding
    while (high.place - low.place > closest * std::max(1.0, std::abs(nearest.place))) {
        const bool goesUp = high.place - nearest.place > nearest.place - low.place;
        Sample& end = goesUp ? high : low;
        std::optional<Sample> sample = sampleAt(nearest.place + goldenPart * (end.place - nearest.place));
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

/// Goes on to where the path ends before `beyond`, as at a critical point. Each halving that finds a state
/// starts the next one, so the states crowd at the end, where properties turn quickly.
bool PathSearch::goToTheEnd(double beyond, Equilibrium& result) {
    for (int i = 0; i < 40 && isWorthGoing(beyond - last_->place); ++i) {
        const double middle = (last_->place + beyond) / 2;
        std::optional<Sample> sample = sampleAt(middle);
        if (!sample)
            beyond = middle;
        else if (reaches(*std::move(sample), result))
            return true;
    }
    last_.reset();
    former_.reset();
    return false;
}

/// Whether states this near may have the value, or the bounds that an error reports are still rough. Close to
/// a critical point properties change with the square root of the distance from it, elsewhere less.
bool PathSearch::isWorthGoing(double distance) const {
    if (!former_)
        return true;
    constexpr double safety = 10;
    constexpr double rough = 1e-2;
    const double change = std::abs(last_->difference - former_->difference) *
                          std::sqrt(distance / (last_->place - former_->place));
    return std::abs(last_->difference) < safety * change || change > rough * (greatest_ - least_);
}

} // namespace solvane::host
