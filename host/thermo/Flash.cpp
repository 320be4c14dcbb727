#include "EnergyFlash.h"
#include "FlashVariables.h"
#include "PhaseSplit.h"
#include "PropertyPackage.h"
#include "SaturatedState.h"
#include "Saturation.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace solvane::host {

namespace {

/// Fractions from here on count; what is less is absent.
constexpr double leastFraction = 1e-100;

bool atTemperatureAndPressure(const Mixture& mixture, double temperature, const FlashCondition& pressure,
                              Equilibrium& result, std::string&) {
    result = {temperature, pressure.value, splitPhases(mixture, temperature, pressure.value)};
    return true;
}

bool atPressureAndProperty(const Mixture& mixture, double pressure, const FlashCondition& property,
                           Equilibrium& result, std::string& error) {
    const FlashVariableRow& row = rowOf(property.variable);
    if (flashAtProperty(mixture, pressure, row.property, property.value, result, error)) {
        return true;
    }
    error = text("the ", row.name, " ", error, " (", row.unit + 1, ")");
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

template <FlashVariable fixed>
bool atVaporFraction(const Mixture& mixture, double value, const FlashCondition& vaporFraction,
                     Equilibrium& result, std::string& error) {
    SaturatedState state;
    const bool found = mixture.compounds.size() == 1
                           ? pureAtVaporFraction(*mixture.compounds[0], fixed, value, state, error)
                           : findSaturatedState(mixture, vaporFraction.value, fixed, value, state, error);
    if (!found) {
        return false;
    }
    if (!checkCondition({FlashVariable::temperature, state.temperature}, error) ||
        !checkCondition({FlashVariable::pressure, state.pressure}, error)) {
        error = text("for vapor fraction ", vaporFraction.value, ", ", error);
        return false;
    }
    result = {state.temperature,
              state.pressure,
              {{Phase::vapor, vaporFraction.value, std::move(state.vapor)},
               {Phase::liquid, 1 - vaporFraction.value, std::move(state.liquid)}}};
    return true;
}

struct FlashRow {
    FlashVariable first;
    FlashVariable second;
    bool (*flash)(const Mixture& mixture, double first, const FlashCondition& second, Equilibrium& result,
                  std::string& error);
};

using enum FlashVariable;
constexpr std::array flashTable{
    FlashRow{temperature, pressure, atTemperatureAndPressure},
    FlashRow{temperature, vaporFraction, atVaporFraction<temperature>},
    FlashRow{pressure, vaporFraction, atVaporFraction<pressure>},
    FlashRow{pressure, enthalpy, atPressureAndProperty},
    FlashRow{pressure, enthalpyF, atPressureAndProperty},
    FlashRow{pressure, enthalpyNF, atPressureAndProperty},
    FlashRow{pressure, entropy, atPressureAndProperty},
    FlashRow{pressure, entropyF, atPressureAndProperty},
    FlashRow{pressure, entropyNF, atPressureAndProperty},
};

/// Null where there is none.
const FlashRow* findFlash(FlashVariable first, FlashVariable second) {
    const auto row = std::ranges::find_if(flashTable, [&](const FlashRow& r) {
        return (r.first == first && r.second == second) || (r.first == second && r.second == first);
    });
    return row == flashTable.end() ? nullptr : &*row;
}

} // namespace

bool PropertyPackage::canFlash(FlashVariable first, FlashVariable second) {
    return findFlash(first, second);
}

bool PropertyPackage::flash(std::span<const double> composition, const FlashCondition& first,
                            const FlashCondition& second, Equilibrium& result, std::string& error) const {
    std::vector<double> fractions;
    if (!normalize(composition, fractions, error) || !checkCondition(first, error) ||
        !checkCondition(second, error)) {
        return false;
    }
    const FlashRow* row = findFlash(first.variable, second.variable);
    if (!row) {
        error = text("a flash at given ", rowOf(first.variable).name, " and ", rowOf(second.variable).name,
                     " is not supported");
        return false;
    }

    Mixture present;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        if (fractions[i] >= leastFraction) {
            present.compounds.push_back(compounds_[i]);
            present.composition.push_back(fractions[i]);
            places.push_back(i);
        }
    }
    const bool inOrder = row->first == first.variable;
    Equilibrium found;
    if (!row->flash(present, (inOrder ? first : second).value, inOrder ? second : first, found, error)) {
        return false;
    }
    for (PhaseState& phase : found.phases) {
        std::vector<double> all(fractions.size(), 0.0);
        for (std::size_t i = 0; i < places.size(); ++i) {
            all[places[i]] = phase.composition[i];
        }
        phase.composition = std::move(all);
    }
    result = std::move(found);
    return true;
}

} // namespace solvane::host
