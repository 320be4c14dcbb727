#include "FlashVariables.h"
#include "PhaseSplit.h"
#include "PropertyFlash.h"
#include "PropertyPackage.h"
#include "SaturatedState.h"

#include <algorithm>
#include <array>
#include <optional>

namespace solvane::host {

namespace {

/// Compounds with smaller fractions count as absent.
constexpr double leastFraction = 1e-100;

bool atTemperatureAndPressure(const Mixture& mixture, double temperature, const FlashCondition& pressure,
                              Equilibrium& result, std::string&) {
    result = {temperature, pressure.value, PhaseSplitter(mixture).split(temperature, pressure.value)};
    return true;
}

using PropertyFlash = bool (*)(const Mixture&, double, const GivenProperty&, Equilibrium&, std::string&);

template <PropertyFlash flash>
bool atProperty(const Mixture& mixture, double first, const FlashCondition& property, Equilibrium& result,
                std::string& error) {
    const FlashVariableRow& row = rowOf(property.variable);
    if (flash(mixture, first, {row.property, property.value}, result, error))
        return true;
    error = text("the ", row.name, " ", property.value, " ", error, " (", row.unit + 1, ")");
    return false;
}

template <FlashVariable fixed>
bool atVaporFraction(const Mixture& mixture, double value, const FlashCondition& vaporFraction,
                     Equilibrium& result, std::string& error) {
    return saturatedEquilibrium(mixture, vaporFraction.value, fixed, value, result, error);
}

struct FlashRow {
    FlashVariable first;
    std::optional<FlashVariable> second; ///< empty for any property of the whole mixture
    bool (*flash)(const Mixture& mixture, double first, const FlashCondition& second, Equilibrium& result,
                  std::string& error);

    bool isFor(FlashVariable one, FlashVariable other) const {
        return one == first && (second ? other == *second : rowOf(other).property != nullptr);
    }
};

using enum FlashVariable;
constexpr std::array flashTable{
    FlashRow{temperature, pressure, atTemperatureAndPressure},
    FlashRow{temperature, vaporFraction, atVaporFraction<temperature>},
    FlashRow{pressure, vaporFraction, atVaporFraction<pressure>},
    FlashRow{pressure, {}, atProperty<flashAtPressure>},
    FlashRow{temperature, {}, atProperty<flashAtTemperature>},
    FlashRow{vaporFraction, {}, atProperty<flashAtVaporFraction>},
};

/// Restores the stated temperature and pressure, which a search by their logarithms rounds.
void keepStated(const FlashCondition& condition, Equilibrium& result) {
    if (condition.variable == temperature)
        result.temperature = condition.value;
    else if (condition.variable == pressure)
        result.pressure = condition.value;
}

bool isPresent(double fraction) {
    return fraction >= leastFraction;
}

Mixture presentOf(const std::vector<const Compound*>& compounds, const std::vector<double>& fractions) {
    Mixture present;
    present.reserve(fractions.size());
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        if (isPresent(fractions[i]))
            present.add(*compounds[i], fractions[i]);
    }
    return present;
}

/// Makes the composition of what is present one of all compounds.
void addAbsent(const std::vector<double>& fractions, std::vector<double>& composition) {
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        if (!isPresent(fractions[i]))
            composition.insert(composition.begin() + static_cast<std::ptrdiff_t>(i), 0);
    }
}

/// Null if there is none.
const FlashRow* findFlash(FlashVariable first, FlashVariable second) {
    const auto row = std::ranges::find_if(
        flashTable, [&](const FlashRow& r) { return r.isFor(first, second) || r.isFor(second, first); });
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
        !checkCondition(second, error))
        return false;
    const FlashRow* row = findFlash(first.variable, second.variable);
    if (!row) {
        error = text("a flash at given ", rowOf(first.variable).name, " and ", rowOf(second.variable).name,
                     " is not supported");
        return false;
    }

    const Mixture present = presentOf(compounds_, fractions);
    const bool inOrder = row->isFor(first.variable, second.variable);
    Equilibrium found;
    if (!row->flash(present, (inOrder ? first : second).value, inOrder ? second : first, found, error))
        return false;
    keepStated(first, found);
    keepStated(second, found);
    if (present.count() < fractions.size()) {
        for (PhaseState& phase : found.phases)
            addAbsent(fractions, phase.composition);
    }
    result = std::move(found);
    return true;
}

} // namespace solvane::host
