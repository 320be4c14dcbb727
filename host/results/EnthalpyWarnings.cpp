#include "EnthalpyWarnings.h"

#include "Balances.h"
#include "cases/NumberText.h"
#include "cases/UnitOfMeasure.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace solvane::host {

namespace {

constexpr double thousand = 1000;
/// Of tabulated heats, in parts.
constexpr double reactionHeatError = 0.1;

double gain(const Flows& flows) {
    return flows.out - flows.in;
}

std::string watts(double value) {
    return shortNumber(value, 6) + " W";
}

/// Whether the sizes are the same; scripts count heat that is taken up or given off.
bool isSameSize(double left, double right) {
    return left != 0 && isKept({std::abs(left), std::abs(right)});
}

/// The parameter with this heat flow or power, of either sign. Null if there is none.
const ModelParameter* findPower(const UnitResult& unit, double size) {
    const auto power = std::ranges::find_if(unit.parameters, [&](const ModelParameter& parameter) {
        const auto* value = parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
        return value && isSameSize(*value, size) &&
               isSameDimension(parameter.dimensionality, parseUnit("W")->exponents);
    });
    return power == unit.parameters.end() ? nullptr : &*power;
}

} // namespace

void addEnthalpyWarnings(const UnitResult& unit, const Balance& balance, std::vector<Warning>& warnings) {
    const double gained = gain(balance.enthalpy);
    if (!std::isfinite(gained) || isKept(balance.enthalpy) || findPower(unit, gained))
        return;
    const auto warn = [&](const std::string& subject, std::string text, const char* remedy) {
        warnings.push_back({unit.name, subject, std::move(text), remedy});
    };
    const double sensible = gain(balance.sensible);
    const double reactionHeat = gained - sensible; // at the temperature of the heats of formation
    if (balance.reacts && isKept(balance.sensible))
        warn("balance",
             "the enthalpies close without those of formation only: the heat of reaction, " +
                 watts(reactionHeat) + ", is left out",
             "set the products by 'enthalpyF', not by 'enthalpy', or add the heat of reaction");
    else if (const ModelParameter* power = balance.reacts ? findPower(unit, sensible) : nullptr)
        warn("parameter " + power->name,
             "the enthalpies change by this value without those of formation, and by " + watts(gained) +
                 " with them",
             "calculate it with 'enthalpyF', not with 'enthalpy'");
    else if (balance.reacts &&
             std::abs(sensible / reactionHeat + 1 / thousand) < reactionHeatError / thousand)
        warn("balance",
             "the enthalpies without those of formation change by " + watts(sensible) +
                 ", a thousandth of the heat of reaction, " + watts(reactionHeat),
             "heats are in J/mol, not in kJ/mol");
    else if (const ModelParameter* tooSmall = findPower(unit, gained / thousand))
        warn("parameter " + tooSmall->name,
             "the enthalpies change by " + watts(gained) + ", a thousand times this value",
             "its values are in W, not in kW");
    else if (const ModelParameter* tooLarge = findPower(unit, gained * thousand))
        warn("parameter " + tooLarge->name,
             "the enthalpies change by " + watts(gained) + ", a thousandth of this value",
             "enthalpies are in J/mol, not in kJ/mol");
}

} // namespace solvane::host
