#include "PropertyTables.h"

#include <array>
#include <span>

namespace solvane {

namespace {

struct SinglePhaseRow {
    const wchar_t* name;
    SinglePhaseProperty property;
};

/// The first row looks like a heading but is a name that scripts may use.
// clang-format off
constexpr std::array<SinglePhaseRow, 45> singlePhaseRows{{
    // name, {unit, molar, overall, molarDerivative}
    {L"name", {L"unit", 0, 0, 0}},
    {L"activity", {L"", 0, 0, 0}},
    {L"activityCoefficient", {L"", 0, 0, 0}},
    {L"compressibilityFactor", {L"", 0, 0, 0}},
    {L"dissociationConstant", {L"", 0, 0, 0}},
    {L"fugacityCoefficient", {L"", 0, 0, 0}},
    {L"logFugacity", {L"", 0, 0, 0}},
    {L"logFugacityCoefficient", {L"", 0, 0, 0}},
    {L"meanActivityCoefficient", {L"", 0, 0, 0}},
    {L"osmoticCoefficient", {L"", 0, 0, 0}},
    {L"pH", {L"", 0, 0, 0}},
    {L"pOH", {L"", 0, 0, 0}},
    {L"compressibility", {L"1 / Pa", 0, 0, 0}},
    {L"density", {L"mol / m3", 1, 0, 0}},
    {L"diffusionCoefficient", {L"m2 / s", 0, 0, 0}},
    {L"fugacity", {L"Pa", 0, 0, 0}},
    {L"jouleThomsonCoefficient", {L"K / Pa", 0, 0, 0}},
    {L"molecularWeight", {L"gr / mol", 0, 0, 0}},
    {L"speedOfSound", {L"m / s", 0, 0, 0}},
    {L"thermalConductivity", {L"W / m / K", 0, 0, 0}},
    {L"viscosity", {L"Pa s", 0, 0, 0}},
    {L"enthalpy", {L"J / mol", 1, 1, 1}},
    {L"enthalpyF", {L"J / mol", 1, 1, 1}},
    {L"enthalpyNF", {L"J / mol", 1, 1, 1}},
    {L"gibbsEnergy", {L"J / mol", 1, 1, 1}},
    {L"gibbsFreeEnergy", {L"J / mol", 1, 1, 1}},
    {L"helmholtzEnergy", {L"J / mol", 1, 1, 1}},
    {L"helmholtzFreeEnergy", {L"J / mol", 1, 1, 1}},
    {L"internalEnergy", {L"J / mol", 1, 1, 1}},
    {L"energy", {L"J / mol", 1, 1, 1}},
    {L"entropy", {L"J / mol / K", 1, 1, 1}},
    {L"entropyF", {L"J / mol / K", 1, 1, 1}},
    {L"entropyNF", {L"J / mol / K", 1, 1, 1}},
    {L"volume", {L"m3 / mol", 1, 1, 1}},
    {L"excessEnthalpy", {L"J / mol", 1, 0, 1}},
    {L"excessGibbsEnergy", {L"J / mol", 1, 0, 1}},
    {L"excessGibbsFreeEnergy", {L"J / mol", 1, 0, 1}},
    {L"excessHelmholtzEnergy", {L"J / mol", 1, 0, 1}},
    {L"excessHelmholtzFreeEnergy", {L"J / mol", 1, 0, 1}},
    {L"excessInternalEnergy", {L"J / mol", 1, 0, 1}},
    {L"excessEntropy", {L"J / mol / K", 1, 0, 1}},
    {L"heatCapacity", {L"J / mol / K", 1, 0, 1}},
    {L"heatCapacityCp", {L"J / mol / K", 1, 0, 1}},
    {L"heatCapacityCv", {L"J / mol / K", 1, 0, 1}},
    {L"excessVolume", {L"m3 / mol", 1, 0, 1}},
}};
// clang-format on

struct UnitRow {
    const wchar_t* name;
    const wchar_t* unit;
};

constexpr std::array<UnitRow, 5> twoPhaseRows{{
    {L"kvalue", L""},
    {L"logKvalue", L""},
    {L"kvalues", L""},
    {L"logKvalues", L""},
    {L"surfaceTension", L"N m"},
}};

/// The blank at the end of "triplePointTemperature " and the unit of the gyration radius are known to
/// scripts.
constexpr std::array<UnitRow, 43> compoundConstantRows{{
    {L"casRegistryNumber", L""},
    {L"chemicalFormula", L""},
    {L"iupacName", L""},
    {L"SMILESformula", L""},
    {L"acentricFactor", L""},
    {L"associationParameter", L""},
    {L"charge", L""},
    {L"criticalCompressibilityFactor", L""},
    {L"criticalTemperature", L"K"},
    {L"energyLennardJones", L"K"},
    {L"normalBoilingPoint", L"K"},
    {L"normalFreezingPoint", L"K"},
    {L"triplePointTemperature ", L"K"},
    {L"criticalPressure", L"Pa"},
    {L"triplePointPressure", L"Pa"},
    {L"bornRadius", L"m"},
    {L"lengthLennardJones", L"m"},
    {L"gyrationRadius", L"M"},
    {L"diffusionVolume", L"m3"},
    {L"dipoleMoment", L"C m"},
    {L"criticalDensity", L"mol / m3"},
    {L"liquidDensityAt25C", L"mol / m3"},
    {L"criticalVolume", L"m3 / mol"},
    {L"liquidVolumeAt25C", L"m3 / mol"},
    {L"vanderwaalsVolume", L"m3 / mol"},
    {L"vanderwaalsArea", L"m2 / mol"},
    {L"molecularWeight", L"gr / mol"},
    {L"parachor", L"m3 kg0.25 / (s 0.5 mol)"},
    {L"heatOfFusionAtNormalFreezingPoint", L"J / mol"},
    {L"heatOfVaporizationAtNormalBoilingPoint", L"J / mol"},
    {L"idealGasEnthalpyOfFormationAt25C", L"J / mol"},
    {L"idealGasGibbsFreeEnergyOfFormationAt25C", L"J / mol"},
    {L"standardEntropyGas", L"J / mol"},
    {L"standardEntropyLiquid", L"J / mol"},
    {L"standardEntropySolid", L"J / mol"},
    {L"standardEnthalpyAqueousDilution", L"J / mol"},
    {L"standardFormationEnthalpyGas", L"J / mol"},
    {L"standardFormationEnthalpyLiquid", L"J / mol"},
    {L"standardFormationEnthalpySolid", L"J / mol"},
    {L"standardFormationGibbsEnergyGas", L"J / mol"},
    {L"standardFormationGibbsEnergyLiquid", L"J / mol"},
    {L"standardFormationGibbsEnergySolid", L"J / mol"},
    {L"standardGibbsAqueousDilution", L"J / mol"},
}};

constexpr std::array<UnitRow, 33> temperatureDependentRows{{
    {L"cpAqueousInfiniteDilution", L"J / mol / K"},
    {L"dielectricConstant", L""},
    {L"expansivity", L"1 / K"},
    {L"fugacityCoefficientOfVapor", L""},
    {L"glassTransitionPressure", L"Pa"},
    {L"heatCapacityOfLiquid", L"J / mol / K"},
    {L"heatCapacityOfSolid", L"J / mol / K"},
    {L"heatOfFusion", L"J / mol"},
    {L"heatOfSublimation", L"J / mol"},
    {L"heatOfSolidSolidPhaseTransition", L"J / mol"},
    {L"heatOfVaporization", L"J / mol"},
    {L"idealGasEnthalpy", L"J / mol"},
    {L"idealGasEntropy", L"J / mol / K"},
    {L"idealGasHeatCapacity", L"J / mol / K"},
    {L"meltingPressure", L"Pa"},
    {L"selfDiffusionCoefficientGas", L"m2 / s"},
    {L"selfDiffusionCoefficientLiquid", L"m2 / s"},
    {L"solidSolidPhaseTransitionPressure", L"Pa"},
    {L"sublimationPressure", L"Pa"},
    {L"surfaceTensionSatLiquid", L"N / m"},
    {L"thermalConductivityOfLiquid", L"W / m / K"},
    {L"thermalConductivityOfSolid", L"W / m / K"},
    {L"thermalConductivityOfVapor", L"W / m / K"},
    {L"vaporPressure", L"Pa"},
    {L"virialCoefficient", L"m3 / mol"},
    {L"viscosityOfLiquid", L"Pa s"},
    {L"viscosityOfVapor", L"Pa s"},
    {L"volumeChangeUponMelting", L"m3 / mol"},
    {L"volumeChangeUponSolidSolidPhaseTransition", L"m3 / mol"},
    {L"volumeChangeUponSublimation", L"m3 / mol"},
    {L"volumeChangeUponVaporization", L"m3 / mol"},
    {L"volumeOfLiquid", L"m3 / mol"},
    {L"volumeOfSolid", L"m3 / mol"},
}};

constexpr std::array<UnitRow, 4> pressureDependentRows{{
    {L"boilingPointTemperature", L"K"},
    {L"glassTransitionTemperature", L"K"},
    {L"meltingTemperature", L"K"},
    {L"solidSolidPhaseTransitionTemperature", L"K"},
}};

UnitMap unitMap(std::span<const UnitRow> rows) {
    UnitMap map;
    for (const UnitRow& row : rows)
        map.add(row.name, row.unit);
    return map;
}

} // namespace

const StringMap<SinglePhaseProperty>& singlePhaseProperties() {
    static const StringMap<SinglePhaseProperty> map = [] {
        StringMap<SinglePhaseProperty> properties;
        for (const SinglePhaseRow& row : singlePhaseRows)
            properties.add(row.name, row.property);
        return properties;
    }();
    return map;
}

const UnitMap& twoPhaseUnits() {
    static const UnitMap map = unitMap(twoPhaseRows);
    return map;
}

const UnitMap& compoundConstantUnits() {
    static const UnitMap map = unitMap(compoundConstantRows);
    return map;
}

const UnitMap& temperatureDependentUnits() {
    static const UnitMap map = unitMap(temperatureDependentRows);
    return map;
}

const UnitMap& pressureDependentUnits() {
    static const UnitMap map = unitMap(pressureDependentRows);
    return map;
}

} // namespace solvane
