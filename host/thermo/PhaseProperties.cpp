#include "Derivatives.h"
#include "FlashVariables.h"
#include "MolarProperties.h"
#include "PropertyPackage.h"
#include "TransportProperties.h"

#include <algorithm>
#include <array>

namespace solvane::host {

namespace {

using enum PhaseProperty;

// clang-format off
constexpr std::array propertyTable{
    PhasePropertyRow{enthalpy,                "enthalpy",                false, true},
    PhasePropertyRow{enthalpyF,               "enthalpyF",               false, true},
    PhasePropertyRow{enthalpyNF,              "enthalpyNF",              false, true},
    PhasePropertyRow{entropy,                 "entropy",                 false, true},
    PhasePropertyRow{entropyF,                "entropyF",                false, true},
    PhasePropertyRow{entropyNF,               "entropyNF",               false, true},
    PhasePropertyRow{internalEnergy,          "internalEnergy",          false, true},
    PhasePropertyRow{gibbsEnergy,             "gibbsEnergy",             false, true},
    PhasePropertyRow{helmholtzEnergy,         "helmholtzEnergy",         false, true},
    PhasePropertyRow{volume,                  "volume",                  false, true},
    PhasePropertyRow{heatCapacityCp,          "heatCapacityCp",          false, true},
    PhasePropertyRow{heatCapacityCv,          "heatCapacityCv",          false, true},
    PhasePropertyRow{excessEnthalpy,          "excessEnthalpy",          false, true},
    PhasePropertyRow{excessEntropy,           "excessEntropy",           false, true},
    PhasePropertyRow{excessGibbsEnergy,       "excessGibbsEnergy",       false, true},
    PhasePropertyRow{excessHelmholtzEnergy,   "excessHelmholtzEnergy",   false, true},
    PhasePropertyRow{excessInternalEnergy,    "excessInternalEnergy",    false, true},
    PhasePropertyRow{excessVolume,            "excessVolume",            false, true},
    PhasePropertyRow{density,                 "density",                 false, false},
    PhasePropertyRow{compressibilityFactor,   "compressibilityFactor",   false, false},
    PhasePropertyRow{compressibility,         "compressibility",         false, false},
    PhasePropertyRow{speedOfSound,            "speedOfSound",            false, false},
    PhasePropertyRow{jouleThomsonCoefficient, "jouleThomsonCoefficient", false, false},
    PhasePropertyRow{molecularWeight,         "molecularWeight",         false, false},
    PhasePropertyRow{viscosity,               "viscosity",               false, false},
    PhasePropertyRow{thermalConductivity,     "thermalConductivity",     false, false},
    PhasePropertyRow{fugacityCoefficient,     "fugacityCoefficient",     true,  false},
    PhasePropertyRow{logFugacityCoefficient,  "logFugacityCoefficient",  true,  false},
    PhasePropertyRow{fugacity,                "fugacity",                true,  false},
    PhasePropertyRow{logFugacity,             "logFugacity",             true,  false},
    PhasePropertyRow{activity,                "activity",                true,  false},
    PhasePropertyRow{activityCoefficient,     "activityCoefficient",     true,  false},
};
// clang-format on

template <class Scalar>
struct State {
    std::span<const Compound* const> compounds;
    Phase phase;
    Scalar temperature;
    Scalar pressure;
    std::span<const Scalar> composition;
};

template <class Scalar>
struct MolarRow {
    PhaseProperty property;
    Scalar MolarPropertiesOf<Scalar>::* value;
};

template <class Scalar, class M = MolarPropertiesOf<Scalar>>
constexpr std::array molarTable{
    MolarRow<Scalar>{enthalpy, &M::enthalpyNF},
    MolarRow<Scalar>{enthalpyF, &M::enthalpyF},
    MolarRow<Scalar>{enthalpyNF, &M::enthalpyNF},
    MolarRow<Scalar>{entropy, &M::entropyNF},
    MolarRow<Scalar>{entropyF, &M::entropyF},
    MolarRow<Scalar>{entropyNF, &M::entropyNF},
    MolarRow<Scalar>{internalEnergy, &M::internalEnergy},
    MolarRow<Scalar>{gibbsEnergy, &M::gibbsEnergy},
    MolarRow<Scalar>{helmholtzEnergy, &M::helmholtzEnergy},
    MolarRow<Scalar>{volume, &M::volume},
    MolarRow<Scalar>{heatCapacityCp, &M::heatCapacityCp},
    MolarRow<Scalar>{heatCapacityCv, &M::heatCapacityCv},
    MolarRow<Scalar>{density, &M::density},
    MolarRow<Scalar>{compressibilityFactor, &M::compressibilityFactor},
    MolarRow<Scalar>{compressibility, &M::compressibility},
    MolarRow<Scalar>{speedOfSound, &M::speedOfSound},
    MolarRow<Scalar>{jouleThomsonCoefficient, &M::jouleThomsonCoefficient},
    MolarRow<Scalar>{molecularWeight, &M::molecularWeight},
};

template <class Scalar, class M = MolarPropertiesOf<Scalar>>
constexpr std::array excessTable{
    MolarRow<Scalar>{excessEnthalpy, &M::enthalpyNF},
    MolarRow<Scalar>{excessEntropy, &M::entropyNF},
    MolarRow<Scalar>{excessGibbsEnergy, &M::gibbsEnergy},
    MolarRow<Scalar>{excessHelmholtzEnergy, &M::helmholtzEnergy},
    MolarRow<Scalar>{excessInternalEnergy, &M::internalEnergy},
    MolarRow<Scalar>{excessVolume, &M::volume},
};

template <class Scalar>
const MolarRow<Scalar>* find(std::span<const MolarRow<Scalar>> table, PhaseProperty property) {
    const auto row = std::ranges::find(table, property, &MolarRow<Scalar>::property);
    return row == table.end() ? nullptr : &*row;
}

template <class Scalar>
std::vector<Scalar> logCoefficients(const State<Scalar>& s) {
    return HomogeneousPhase<Scalar>(s.compounds, s.phase, s.temperature, s.pressure, s.composition)
        .logFugacityCoefficients();
}

/// ln phi of the pure compounds in the same phase.
template <class Scalar>
std::vector<Scalar> pureLogCoefficients(const State<Scalar>& s) {
    const std::array<Scalar, 1> pure{1.0};
    std::vector<Scalar> result;
    for (std::size_t i = 0; i < s.compounds.size(); ++i) {
        result.push_back(logCoefficients(
            State<Scalar>{s.compounds.subspan(i, 1), s.phase, s.temperature, s.pressure, pure})[0]);
    }
    return result;
}

/// A property of a compound from its fraction, the pressure, and its ln phi in the mixture and alone.
template <class Scalar>
struct CompoundRow {
    PhaseProperty property;
    bool againstPure; ///< otherwise ln phi alone is not needed
    Scalar (*value)(Scalar fraction, Scalar pressure, Scalar inMixture, Scalar alone);
};

// The functions exp and log are those of the Scalar.
using std::exp;
using std::log;

template <class Scalar, class S = Scalar>
constexpr std::array compoundTable{
    CompoundRow<S>{fugacityCoefficient, false, [](S, S, S inMixture, S) { return exp(inMixture); }},
    CompoundRow<S>{logFugacityCoefficient, false, [](S, S, S inMixture, S) { return inMixture; }},
    CompoundRow<S>{fugacity, false, [](S x, S p, S inMixture, S) { return x * p * exp(inMixture); }},
    CompoundRow<S>{logFugacity, false, [](S x, S p, S inMixture, S) { return log(x) + log(p) + inMixture; }},
    CompoundRow<S>{activity, true, [](S x, S, S inMixture, S alone) { return x * exp(inMixture - alone); }},
    CompoundRow<S>{activityCoefficient, true,
                   [](S, S, S inMixture, S alone) { return exp(inMixture - alone); }},
};

template <class Scalar>
std::vector<Scalar> compoundValues(PhaseProperty property, const State<Scalar>& s) {
    const auto& table = compoundTable<Scalar>;
    const auto row = std::ranges::find(table, property, &CompoundRow<Scalar>::property);
    std::vector<Scalar> values = logCoefficients(s);
    const std::vector<Scalar> alone =
        row->againstPure ? pureLogCoefficients(s) : std::vector<Scalar>(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = row->value(s.composition[i], s.pressure, values[i], alone[i]);
    return values;
}

template <class Scalar>
std::vector<Scalar> valuesOf(PhaseProperty property, const State<Scalar>& s) {
    const auto of = [&](const auto& function) {
        return function(s.compounds, s.phase, s.temperature, s.pressure, s.composition);
    };
    if (const auto* row = find<Scalar>(molarTable<Scalar>, property))
        return {of(molarProperties<Scalar>).*row->value};
    if (const auto* row = find<Scalar>(excessTable<Scalar>, property))
        return {of(excessProperties<Scalar>).*row->value};
    if (property == viscosity || property == thermalConductivity) {
        const auto function =
            property == viscosity ? host::viscosity<Scalar> : host::thermalConductivity<Scalar>;
        const HomogeneousPhase<Scalar> phase(s.compounds, s.phase, s.temperature, s.pressure, s.composition);
        return {function(s.compounds, s.temperature, phase.volume, s.composition)};
    }
    return compoundValues(property, s);
}

} // namespace

std::span<const PhasePropertyRow> phaseProperties() {
    return propertyTable;
}

bool PropertyPackage::phaseProperty(PhaseProperty property, Phase phase, double temperature, double pressure,
                                    std::span<const double> composition, std::vector<double>& values,
                                    std::string& error, Derivative derivative) const {
    std::vector<double> fractions;
    if (!normalize(composition, fractions, error) ||
        !checkCondition({FlashVariable::temperature, temperature}, error) ||
        !checkCondition({FlashVariable::pressure, pressure}, error))
        return false;
    const auto evaluate = [&]<class Scalar>(Scalar t, Scalar p, std::span<const Scalar> x) {
        return valuesOf(property, State<Scalar>{compounds_, phase, t, p, x});
    };
    const bool molar = std::ranges::find(propertyTable, property, &PhasePropertyRow::property)->molar;
    values = derived(evaluate, derivative, temperature, pressure, fractions, fractions.size(), molar);
    return true;
}

} // namespace solvane::host
