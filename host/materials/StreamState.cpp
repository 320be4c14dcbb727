#include "StreamState.h"

#include "CapeOpen.h"
#include "com/Text.h"

#include <algorithm>
#include <numeric>

namespace solvane::host {

namespace {

constexpr std::array<std::wstring_view, 3> placeLabels{L"Overall", L"Vapor", L"Liquid"};

Phase packagePhase(Place place) {
    return place == Place::vapor ? Phase::vapor : Phase::liquid;
}

Place placeOf(Phase phase) {
    return phase == Phase::vapor ? Place::vapor : Place::liquid;
}

/// "enthalpy of phase Vapor", "temperature", for messages.
std::wstring describe(Place place, const StreamProperty& property) {
    std::wstring text(property.name);
    if (place != Place::overall)
        text.append(L" of phase ").append(placeLabel(place));
    return text;
}

bool notAvailable(Failure& failure, Place place, const StreamProperty& property) {
    return fail(failure, ECapeThrmPropertyNotAvailableHR,
                describe(place, property) + L" is neither set nor calculated");
}

/// The pairs of conditions that the property package solves, in either order.
constexpr std::array flashPairs{
    std::pair{FlashVariable::temperature, FlashVariable::pressure},
    std::pair{FlashVariable::temperature, FlashVariable::vaporFraction},
    std::pair{FlashVariable::pressure, FlashVariable::vaporFraction},
    std::pair{FlashVariable::pressure, FlashVariable::enthalpy},
    std::pair{FlashVariable::pressure, FlashVariable::enthalpyF},
    std::pair{FlashVariable::pressure, FlashVariable::enthalpyNF},
    std::pair{FlashVariable::pressure, FlashVariable::entropy},
    std::pair{FlashVariable::pressure, FlashVariable::entropyF},
    std::pair{FlashVariable::pressure, FlashVariable::entropyNF},
};

} // namespace

std::wstring_view placeLabel(Place place) {
    return placeLabels[static_cast<std::size_t>(place)];
}

std::optional<Place> findPlace(std::wstring_view label) {
    for (const Place place : {Place::overall, Place::vapor, Place::liquid})
        if (compareNoCase(label, placeLabel(place)) == 0)
            return place;
    return std::nullopt;
}

StreamState::StreamState(std::shared_ptr<const PropertyPackage> package) : package_(std::move(package)) {}

void StreamState::clear() {
    records_ = {};
}

void StreamState::clearCalculated() {
    for (Record& record : records_)
        record.calculated.clear();
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
    if (values.size() != expected)
        return fail(failure, ECapeInvalidArgumentHR,
                    describe(place, property) + L" takes " + std::to_wstring(expected) + L" values, not " +
                        std::to_wstring(values.size()));
    const bool isFlow = &property == &flowProperty || &property == &totalFlowProperty;
    if (isFlow && place != Place::overall)
        return fail(failure, ECapeNoImplHR,
                    describe(place, property) + L" cannot be set; it follows from the stream's flow and the "
                                                L"phase fraction");
    if (&property == &flowProperty)
        return setFlows(values, failure);

    // What was calculated for another state is not true of the new one.
    if (&property == &temperatureProperty || &property == &pressureProperty ||
        &property == &fractionProperty) {
        if (place == Place::overall)
            clearCalculated();
        else
            at(place).calculated.clear();
    }
    at(place).calculated.erase(&property);
    at(place).values[&property].assign(values.begin(), values.end());
    return true;
}

bool StreamState::setFlows(std::span<const double> flows, Failure& failure) {
    const double total = std::reduce(flows.begin(), flows.end());
    if (!(total > 0))
        return fail(failure, ECapeInvalidArgumentHR,
                    L"flow gives no composition: the compounds' flows must have a positive sum");
    std::vector<double> fractions(flows.begin(), flows.end());
    for (double& fraction : fractions)
        fraction /= total;
    return set(Place::overall, totalFlowProperty, std::span(&total, 1), failure) &&
           set(Place::overall, fractionProperty, fractions, failure);
}

bool StreamState::calculate(Place place, const StreamProperty& property, Failure& failure) {
    if (!property.calculate)
        return fail(failure, ECapeThrmPropertyNotAvailableHR,
                    std::wstring(property.name) + L" is not a property that is calculated");
    std::vector<double> values;
    const bool calculated = place == Place::overall ? calculateOverall(property, values, failure)
                                                    : calculatePhase(place, property, values, failure);
    if (calculated)
        at(place).calculated[&property] = std::move(values);
    return calculated;
}

bool StreamState::calculatePhase(Place phase, const StreamProperty& property, std::vector<double>& values,
                                 Failure& failure) const {
    std::vector<double> temperature, pressure, composition;
    if (!get(phase, temperatureProperty, temperature, failure) ||
        !get(phase, pressureProperty, pressure, failure) ||
        !get(phase, fractionProperty, composition, failure))
        return false;
    std::string error;
    return property.calculate(*package_, packagePhase(phase), temperature.front(), pressure.front(),
                              composition, values, error) ||
           fail(failure, ECapeComputationHR,
                describe(phase, property) + L" cannot be calculated: " + widen(error, CP_UTF8));
}

bool StreamState::calculateOverall(const StreamProperty& property, std::vector<double>& values,
                                   Failure& failure) const {
    if (property.shape != ValueShape::scalar)
        return fail(failure, ECapeNoImplHR,
                    std::wstring(property.name) + L" is calculated for a phase, not for the stream");
    values = {0.0};
    for (const Place phase : phasePlaces) {
        if (!isPresent(phase))
            continue;
        const auto* fraction = find(phase, phaseFractionProperty);
        if (!fraction)
            return notAvailable(failure, phase, phaseFractionProperty);
        std::vector<double> value;
        if (fraction->front() == 0)
            continue;
        if (!calculatePhase(phase, property, value, failure))
            return false;
        values.front() += fraction->front() * value.front();
    }
    return true;
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
    return std::ranges::any_of(flashPairs, [&](const auto& pair) {
        return (one == pair.first && other == pair.second) || (one == pair.second && other == pair.first);
    });
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
    for (const FlashSpecification& specification : specifications)
        keep(*specification.property);

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
}

} // namespace solvane::host
