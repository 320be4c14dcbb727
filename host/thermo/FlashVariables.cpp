#include "FlashVariables.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace solvane::host {

namespace {

constexpr double anything = INFINITY;
constexpr std::array variableTable{
    FlashVariableRow{FlashVariable::temperature, "temperature", lowestTemperature, highestTemperature, " K",
                     nullptr},
    FlashVariableRow{FlashVariable::pressure, "pressure", 0, highestPressure, " Pa", nullptr},
    FlashVariableRow{FlashVariable::vaporFraction, "vapor fraction", 0, 1, "", nullptr},
    FlashVariableRow{FlashVariable::enthalpy, "enthalpy", -anything, anything, " J/mol",
                     &MolarProperties::enthalpyNF},
    FlashVariableRow{FlashVariable::enthalpyF, "enthalpyF", -anything, anything, " J/mol",
                     &MolarProperties::enthalpyF},
    FlashVariableRow{FlashVariable::enthalpyNF, "enthalpyNF", -anything, anything, " J/mol",
                     &MolarProperties::enthalpyNF},
    FlashVariableRow{FlashVariable::entropy, "entropy", -anything, anything, " J/mol/K",
                     &MolarProperties::entropyNF},
    FlashVariableRow{FlashVariable::entropyF, "entropyF", -anything, anything, " J/mol/K",
                     &MolarProperties::entropyF},
    FlashVariableRow{FlashVariable::entropyNF, "entropyNF", -anything, anything, " J/mol/K",
                     &MolarProperties::entropyNF},
    FlashVariableRow{FlashVariable::internalEnergy, "internal energy", -anything, anything, " J/mol",
                     &MolarProperties::internalEnergy},
    FlashVariableRow{FlashVariable::volume, "volume", -anything, anything, " m3/mol",
                     &MolarProperties::volume},
};

} // namespace

const FlashVariableRow& rowOf(FlashVariable variable) {
    return *std::ranges::find(variableTable, variable, &FlashVariableRow::variable);
}

bool checkCondition(const FlashCondition& condition, std::string& error) {
    const FlashVariableRow& row = rowOf(condition.variable);
    const double value = condition.value;
    const bool positive = condition.variable != FlashVariable::pressure || value > 0;
    if (std::isfinite(value) && positive && value >= row.lowest && value <= row.highest)
        return true;
    error = text("the ", row.name, " ", value, row.unit);
    if (!std::isfinite(value))
        error += " is not a number";
    else if (!positive)
        error += " is not positive";
    else
        error += text(" lies outside ", row.lowest, " to ", row.highest, row.unit);
    return false;
}

} // namespace solvane::host
