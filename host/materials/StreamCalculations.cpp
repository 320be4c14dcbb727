// The calculations of a stream by the property package.
#include "CapeOpen.h"
#include "StreamState.h"
#include "com/Text.h"

namespace solvane::host {

namespace {

Phase packagePhase(Place place) {
    return place == Place::vapor ? Phase::vapor : Phase::liquid;
}

/// `answered` is the package's result.
bool check(bool answered, Place place, const StreamProperty& property, const std::string& error,
           Failure& failure) {
    return answered || fail(failure, ECapeComputationHR,
                            describe(place, property) + L" cannot be calculated: " + widen(error, CP_UTF8));
}

bool notCalculatedFor(Place place, const StreamProperty& property, Failure& failure) {
    return fail(failure, ECapeNoImplHR,
                property.name + L" is not calculated for " + std::wstring(placeLabel(place)));
}

} // namespace

bool StreamState::calculate(Place place, const StreamProperty& property, Failure& failure) {
    std::vector<double> values;
    const bool calculated = std::visit(
        [&](const auto& request) { return calculateAt(place, property, request, values, failure); },
        property.request);
    if (calculated)
        at(place).calculated[&property] = std::move(values);
    return calculated;
}

bool StreamState::readConditions(Place phase, PhaseConditions& conditions, Failure& failure) const {
    std::vector<double> temperature, pressure;
    if (!get(phase, temperatureProperty, temperature, failure) ||
        !get(phase, pressureProperty, pressure, failure) ||
        !get(phase, fractionProperty, conditions.composition, failure))
        return false;
    conditions.temperature = temperature.front();
    conditions.pressure = pressure.front();
    return true;
}

bool StreamState::calculateAt(Place, const StreamProperty& property, std::monostate, std::vector<double>&,
                              Failure& failure) const {
    return fail(failure, ECapeThrmPropertyNotAvailableHR,
                property.name + L" is not a property that is calculated");
}

bool StreamState::calculateAt(Place phase, const StreamProperty& property, const PhaseRequest& request,
                              std::vector<double>& values, Failure& failure) const {
    if (phase == Place::overall)
        return calculateOverall(property, request, values, failure);
    if (!isPhase(phase))
        return notCalculatedFor(phase, property, failure);
    PhaseConditions state;
    std::string error;
    return readConditions(phase, state, failure) &&
           check(package_->phaseProperty(request.property->property, packagePhase(phase), state.temperature,
                                         state.pressure, state.composition, values, error,
                                         request.derivative),
                 phase, property, error, failure);
}

bool StreamState::calculateOverall(const StreamProperty& property, const PhaseRequest& request,
                                   std::vector<double>& values, Failure& failure) const {
    const bool addsUp =
        request.property->molar || request.property->property == PhaseProperty::molecularWeight;
    if (!addsUp || request.derivative != Derivative::none)
        return notCalculatedFor(Place::overall, property, failure);
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
        if (!calculateAt(phase, property, request, value, failure))
            return false;
        values.front() += fraction->front() * value.front();
    }
    return true;
}

bool StreamState::calculateAt(Place both, const StreamProperty& property, const TwoPhaseRequest& request,
                              std::vector<double>& values, Failure& failure) const {
    if (both == Place::overall || isPhase(both))
        return notCalculatedFor(both, property, failure);
    const bool vaporFirst = both == Place::vaporLiquid;
    const Place first = vaporFirst ? Place::vapor : Place::liquid;
    const Place second = vaporFirst ? Place::liquid : Place::vapor;
    PhaseConditions one, other;
    if (!readConditions(first, one, failure) || !readConditions(second, other, failure))
        return false;
    if (one.temperature != other.temperature || one.pressure != other.pressure)
        return fail(failure, ECapeInvalidArgumentHR,
                    describe(both, property) + L" needs phases of the same temperature and pressure");
    const TwoPhases phases{{packagePhase(first), packagePhase(second)}, {one.composition, other.composition}};
    std::string error;
    return check(package_->twoPhaseProperty(request.property, phases, one.temperature, one.pressure, values,
                                            error, request.derivative),
                 both, property, error, failure);
}

bool StreamState::calculateAt(Place place, const StreamProperty& property, const PureRequest& request,
                              std::vector<double>& values, Failure& failure) const {
    if (place != Place::overall)
        return notCalculatedFor(place, property, failure);
    const bool byTemperature = request.property->argument == PureArgument::temperature;
    std::vector<double> argument;
    std::string error;
    return get(place, byTemperature ? temperatureProperty : pressureProperty, argument, failure) &&
           check(
               package_->pureProperty(*request.property, argument.front(), values, error, request.derivative),
               place, property, error, failure);
}

} // namespace solvane::host
