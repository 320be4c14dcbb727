#include "StreamState.h"

#include "CapeOpen.h"
#include "com/Text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace solvane::host {

namespace {

constexpr std::array<std::wstring_view, 5> placeLabels{L"Overall", L"Vapor", L"Liquid", L"VaporLiquid",
                                                       L"LiquidVapor"};

Place placeOf(Phase phase) {
    return phase == Phase::vapor ? Place::vapor : Place::liquid;
}

} // namespace

bool isPhase(Place place) {
    return place == Place::vapor || place == Place::liquid;
}

std::optional<Place> placeOfBoth(Place first, Place second) {
    if (first == second)
        return std::nullopt;
    return first == Place::vapor ? Place::vaporLiquid : Place::liquidVapor;
}

std::wstring_view placeLabel(Place place) {
    return placeLabels[static_cast<std::size_t>(place)];
}

std::optional<Place> findPlace(std::wstring_view label) {
    const auto found = std::ranges::find_if(
        placeLabels, [&](std::wstring_view known) { return compareNoCase(label, known) == 0; });
    return found == placeLabels.end() ? std::nullopt
                                      : std::optional(static_cast<Place>(found - placeLabels.begin()));
}

std::wstring describe(Place place, const StreamProperty& property) {
    return place == Place::overall
               ? property.name
               : std::wstring(property.name).append(L" of phase ").append(placeLabel(place));
}

bool notAvailable(Failure& failure, Place place, const StreamProperty& property) {
    return fail(failure, ECapeThrmPropertyNotAvailableHR,
                describe(place, property) + L" is neither set nor calculated");
}

StreamState::StreamState(std::shared_ptr<const PropertyPackage> package,
                         std::shared_ptr<const MaterialHabits> habits)
    : package_(std::move(package)), habits_(std::move(habits)) {
    clear();
}

void StreamState::clear() {
    records_ = {};
    for (const Place phase : phasePlaces)
        at(phase).present = !habits_->rules.strict;
}

std::array<Place, 2> StreamState::phases() const {
    return habits_->rules.liquidFirst ? std::array{Place::liquid, Place::vapor} : phasePlaces;
}

void StreamState::clearCalculated() {
    for (Record& record : records_)
        record.calculated.clear();
}

/// Drops the values that were calculated for the present phases together.
void StreamState::clearSums() {
    std::erase_if(at(Place::overall).calculated, [](const auto& value) { return !value.first->isPure(); });
}

const std::vector<double>* StreamState::find(Place place, const StreamProperty& property) const {
    for (const Values* values : {&at(place).calculated, &at(place).values})
        if (const auto found = values->find(&property); found != values->end())
            return &found->second;
    return nullptr;
}

bool StreamState::get(Place place, const StreamProperty& property, std::vector<double>& values,
                      Failure& failure) const {
    if (const auto* stored = find(place, property)) {
        values = *stored;
        return true;
    }
    // A flash leaves all phases at the stream's own temperature and pressure.
    if (&property == &temperatureProperty || &property == &pressureProperty)
        return place == Place::overall ? notAvailable(failure, place, property)
                                       : get(Place::overall, property, values, failure);

    const bool isTotal = &property == &totalFlowProperty && place != Place::overall;
    if (!isTotal && &property != &flowProperty)
        return notAvailable(failure, place, property);
    const auto* totalFlow = find(Place::overall, totalFlowProperty);
    const auto* share = find(place, phaseFractionProperty);
    if (!totalFlow || (place != Place::overall && !share))
        return notAvailable(failure, place, property);
    const double flow = totalFlow->front() * (place == Place::overall ? 1.0 : share->front());
    if (isTotal) {
        values = {flow};
        return true;
    }
    if (!get(place, fractionProperty, values, failure))
        return false;
    std::ranges::transform(values, values.begin(), [flow](double fraction) { return flow * fraction; });
    return true;
}

bool StreamState::set(Place place, const StreamProperty& property, std::span<const double> values,
                      Failure& failure) {
    const std::size_t expected = property.shape == ValueShape::scalar ? 1 : compoundCount();
    if (property.shape != ValueShape::other && values.size() != expected)
        return fail(failure, ECapeInvalidArgumentHR,
                    describe(place, property) + L": expected " + std::to_wstring(expected) +
                        (expected == 1 ? L" value, got " : L" values, got ") +
                        std::to_wstring(values.size()));
    if (place != Place::overall && !isPhase(place))
        return fail(failure, ECapeNoImplHR, describe(place, property) + L" cannot be set, only calculated");
    const bool isFlow = &property == &flowProperty || &property == &totalFlowProperty;
    if (isFlow && place != Place::overall)
        return fail(failure, ECapeNoImplHR,
                    describe(place, property) + L" cannot be set; it follows from the stream's flow and the "
                                                L"phase fraction");
    if (&property == &flowProperty)
        return setFlows(values, failure);
    if (&property == &fractionProperty && habits_->rules.strict)
        if (const double sum = std::reduce(values.begin(), values.end()); !(std::abs(sum - 1) <= 1e-6))
            return fail(failure, ECapeInvalidArgumentHR,
                        describe(place, property) + L" sums to " + std::to_wstring(sum) + L", not to 1");

    // Values that were calculated for the old state are not valid for the new one.
    if (&property == &temperatureProperty || &property == &pressureProperty ||
        &property == &fractionProperty) {
        const std::array affected{place, Place::vaporLiquid, Place::liquidVapor};
        if (place == Place::overall)
            clearCalculated();
        else
            std::ranges::for_each(affected, [this](Place one) { at(one).calculated.clear(); });
    }
    if (isPhase(place))
        clearSums();
    at(place).calculated.erase(&property);
    at(place).values[&property].assign(values.begin(), values.end());
    return true;
}

bool StreamState::setFlows(std::span<const double> flows, Failure& failure) {
    const double total = std::reduce(flows.begin(), flows.end());
    if (!(total > 0))
        return fail(failure, ECapeInvalidArgumentHR,
                    L"flow determines no composition: the compounds' flows must have a positive sum");
    std::vector<double> fractions(flows.begin(), flows.end());
    for (double& fraction : fractions)
        fraction /= total;
    return set(Place::overall, totalFlowProperty, std::span(&total, 1), failure) &&
           set(Place::overall, fractionProperty, fractions, failure);
}

void StreamState::setPresentPhases(std::span<const std::pair<Place, PhaseStatus>> phases) {
    for (const Place place : phasePlaces) {
        const auto listed = std::ranges::find(phases, place, &std::pair<Place, PhaseStatus>::first);
        Record& record = at(place);
        if (listed == phases.end()) {
            record = {};
            record.present = false;
        } else {
            record.present = true;
            record.status = listed->second;
        }
    }
}

bool StreamState::canFlash(const FlashSpecification& first, const FlashSpecification& second) {
    const auto one = first.property->flashVariable;
    const auto other = second.property->flashVariable;
    return one && other && PropertyPackage::canFlash(*one, *other);
}

bool StreamState::readCondition(const FlashSpecification& specification, FlashCondition& condition,
                                Failure& failure) const {
    const auto* value = find(specification.place, *specification.property);
    if (!value)
        return fail(failure, ECapeThrmPropertyNotAvailableHR,
                    L"The flash needs " + describe(specification.place, *specification.property) +
                        L", which is not set");
    condition = {*specification.property->flashVariable, value->front()};
    if (specification.place == Place::liquid)
        condition.value = 1 - condition.value;
    return true;
}

bool StreamState::flash(const FlashSpecification& first, const FlashSpecification& second, Failure& failure) {
    if (!canFlash(first, second))
        return fail(failure, ECapeNoImplHR,
                    L"Flashes at " + describe(first.place, *first.property) + L" and " +
                        describe(second.place, *second.property) + L" are not supported");
    const auto* composition = find(Place::overall, fractionProperty);
    if (!composition)
        return fail(failure, ECapeThrmPropertyNotAvailableHR, L"The flash needs fraction, which is not set");
    FlashCondition one{}, other{};
    if (!readCondition(first, one, failure) || !readCondition(second, other, failure))
        return false;
    if (habits_->onFlash)
        habits_->onFlash();
    Equilibrium equilibrium;
    std::string error;
    if (!package_->flash(*composition, one, other, equilibrium, error))
        return fail(failure, ECapeSolvingErrorHR, L"The flash failed: " + widen(error, CP_UTF8));
    store(equilibrium, std::array{first, second});
    return true;
}

void StreamState::store(const Equilibrium& equilibrium, std::span<const FlashSpecification> specifications) {
    Values kept;
    const auto keep = [&](const StreamProperty& property) {
        if (const auto* value = find(Place::overall, property))
            kept[&property] = *value;
    };
    keep(fractionProperty);
    keep(totalFlowProperty);
    std::vector<std::pair<FlashSpecification, std::vector<double>>> stated;
    for (const FlashSpecification& one : specifications)
        stated.emplace_back(one, *find(one.place, *one.property));

    records_ = {};
    at(Place::overall).values = std::move(kept);
    at(Place::overall).values[&temperatureProperty] = {equilibrium.temperature};
    at(Place::overall).values[&pressureProperty] = {equilibrium.pressure};
    for (const Place place : phasePlaces)
        at(place).present = false;
    for (const PhaseState& phase : equilibrium.phases) {
        Record& record = at(placeOf(phase.phase));
        record.present = true;
        record.status = PhaseStatus::atEquilibrium;
        record.values[&phaseFractionProperty] = {phase.fraction};
        record.values[&fractionProperty] = phase.composition;
    }
    // To the last digit, and the vapour fraction also where it was stated as that of the liquid.
    for (auto& [specification, values] : stated)
        at(specification.place).values[specification.property] = std::move(values);
}

} // namespace solvane::host
