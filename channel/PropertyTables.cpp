#include "PropertyTables.h"

#include <array>
#include <span>

namespace solvane {

namespace {

struct SinglePhaseRow {
    const wchar_t* name;
    SinglePhaseProperty property;
};

/// Prescribed texts, here and in the tables below: the first row, which looks like a heading, is a name that
/// scripts may use, and "gr" means gram.
// clang-format off
constexpr auto singlePhaseRows = std::to_array<SinglePhaseRow>({
    // name, {unit, molar, overall, molarDerivative}
    {L"name", {"unit", 0, 0, 0}},
    {L"activity", {"", 0, 0, 0}},
    {L"activityCoefficient", {"", 0, 0, 0}},
    {L"compressibilityFactor", {"", 0, 0, 0}},
    {L"dissociationConstant", {"", 0, 0, 0}},
    {L"fugacityCoefficient", {"", 0, 0, 0}},
    {L"logFugacity", {"", 0, 0, 0}},
    {L"logFugacityCoefficient", {"", 0, 0, 0}},
    {L"meanActivityCoefficient", {"", 0, 0, 0}},
    {L"osmoticCoefficient", {"", 0, 0, 0}},
    {L"pH", {"", 0, 0, 0}},
    {L"pOH", {"", 0, 0, 0}},
    {L"compressibility", {"1 / Pa", 0, 0, 0}},
    {L"density", {"mol / m3", 1, 0, 0}},
    {L"diffusionCoefficient", {"m2 / s", 0, 0, 0}},
    {L"fugacity", {"Pa", 0, 0, 0}},
    {L"jouleThomsonCoefficient", {"K / Pa", 0, 0, 0}},
    {L"molecularWeight", {"gr / mol", 0, 0, 0}},
    {L"speedOfSound", {"m / s", 0, 0, 0}},
    {L"thermalConductivity", {"W / m / K", 0, 0, 0}},
    {L"viscosity", {"Pa s", 0, 0, 0}},
    {L"enthalpy", {"J / mol", 1, 1, 1}},
    {L"enthalpyF", {"J / mol", 1, 1, 1}},
    {L"enthalpyNF", {"J / mol", 1, 1, 1}},
    {L"gibbsEnergy", {"J / mol", 1, 1, 1}},
    {L"gibbsFreeEnergy", {"J / mol", 1, 1, 1}},
    {L"helmholtzEnergy", {"J / mol", 1, 1, 1}},
    {L"helmholtzFreeEnergy", {"J / mol", 1, 1, 1}},
    {L"internalEnergy", {"J / mol", 1, 1, 1}},
    {L"energy", {"J / mol", 1, 1, 1}},
    {L"entropy", {"J / mol / K", 1, 1, 1}},
    {L"entropyF", {"J / mol / K", 1, 1, 1}},
    {L"entropyNF", {"J / mol / K", 1, 1, 1}},
    {L"volume", {"m3 / mol", 1, 1, 1}},
    {L"excessEnthalpy", {"J / mol", 1, 0, 1}},
    {L"excessGibbsEnergy", {"J / mol", 1, 0, 1}},
    {L"excessGibbsFreeEnergy", {"J / mol", 1, 0, 1}},
    {L"excessHelmholtzEnergy", {"J / mol", 1, 0, 1}},
    {L"excessHelmholtzFreeEnergy", {"J / mol", 1, 0, 1}},
    {L"excessInternalEnergy", {"J / mol", 1, 0, 1}},
    {L"excessEntropy", {"J / mol / K", 1, 0, 1}},
    {L"heatCapacity", {"J / mol / K", 1, 0, 1}},
    {L"heatCapacityCp", {"J / mol / K", 1, 0, 1}},
    {L"heatCapacityCv", {"J / mol / K", 1, 0, 1}},
    {L"excessVolume", {"m3 / mol", 1, 0, 1}},
});
// clang-format on

struct UnitRow {
    const wchar_t* name;
    const char* unit;
};

/// Prescribed texts: the surface tension's unit stays "N m".
constexpr auto twoPhaseRows = std::to_array<UnitRow>({
    {L"kvalue", ""},
    {L"logKvalue", ""},
    {L"kvalues", ""},
    {L"logKvalues", ""},
    {L"surfaceTension", "N m"},
});

/// Prescribed texts: scripts know the blank at the end of "triplePointTemperature ", the "M" of the gyration
/// radius and the "J / mol" of the standard entropies.
constexpr auto compoundConstantRows = std::to_array<UnitRow>({
    {L"casRegistryNumber", ""},
    {L"chemicalFormula", ""},
    {L"iupacName", ""},
    {L"SMILESformula", ""},
    {L"acentricFactor", ""},
    {L"associationParameter", ""},
    {L"charge", ""},
    {L"criticalCompressibilityFactor", ""},
    {L"criticalTemperature", "K"},
    {L"energyLennardJones", "K"},
    {L"normalBoilingPoint", "K"},
    {L"normalFreezingPoint", "K"},
    {L"triplePointTemperature ", "K"},
    {L"criticalPressure", "Pa"},
    {L"triplePointPressure", "Pa"},
    {L"bornRadius", "m"},
    {L"lengthLennardJones", "m"},
    {L"gyrationRadius", "M"},
    {L"diffusionVolume", "m3"},
    {L"dipoleMoment", "C m"},
    {L"criticalDensity", "mol / m3"},
    {L"liquidDensityAt25C", "mol / m3"},
    {L"criticalVolume", "m3 / mol"},
    {L"liquidVolumeAt25C", "m3 / mol"},
    {L"vanderwaalsVolume", "m3 / mol"},
    {L"vanderwaalsArea", "m2 / mol"},
    {L"molecularWeight", "gr / mol"},
    {L"parachor", "m3 kg0.25 / (s 0.5 mol)"},
    {L"heatOfFusionAtNormalFreezingPoint", "J / mol"},
    {L"heatOfVaporizationAtNormalBoilingPoint", "J / mol"},
    {L"idealGasEnthalpyOfFormationAt25C", "J / mol"},
    {L"idealGasGibbsFreeEnergyOfFormationAt25C", "J / mol"},
    {L"standardEntropyGas", "J / mol"},
    {L"standardEntropyLiquid", "J / mol"},
    {L"standardEntropySolid", "J / mol"},
    {L"standardEnthalpyAqueousDilution", "J / mol"},
    {L"standardFormationEnthalpyGas", "J / mol"},
    {L"standardFormationEnthalpyLiquid", "J / mol"},
    {L"standardFormationEnthalpySolid", "J / mol"},
    {L"standardFormationGibbsEnergyGas", "J / mol"},
    {L"standardFormationGibbsEnergyLiquid", "J / mol"},
    {L"standardFormationGibbsEnergySolid", "J / mol"},
    {L"standardGibbsAqueousDilution", "J / mol"},
});

constexpr auto temperatureDependentRows = std::to_array<UnitRow>({
    {L"cpAqueousInfiniteDilution", "J / mol / K"},
    {L"dielectricConstant", ""},
    {L"expansivity", "1 / K"},
    {L"fugacityCoefficientOfVapor", ""},
    {L"glassTransitionPressure", "Pa"},
    {L"heatCapacityOfLiquid", "J / mol / K"},
    {L"heatCapacityOfSolid", "J / mol / K"},
    {L"heatOfFusion", "J / mol"},
    {L"heatOfSublimation", "J / mol"},
    {L"heatOfSolidSolidPhaseTransition", "J / mol"},
    {L"heatOfVaporization", "J / mol"},
    {L"idealGasEnthalpy", "J / mol"},
    {L"idealGasEntropy", "J / mol / K"},
    {L"idealGasHeatCapacity", "J / mol / K"},
    {L"meltingPressure", "Pa"},
    {L"selfDiffusionCoefficientGas", "m2 / s"},
    {L"selfDiffusionCoefficientLiquid", "m2 / s"},
    {L"solidSolidPhaseTransitionPressure", "Pa"},
    {L"sublimationPressure", "Pa"},
    {L"surfaceTensionSatLiquid", "N / m"},
    {L"thermalConductivityOfLiquid", "W / m / K"},
    {L"thermalConductivityOfSolid", "W / m / K"},
    {L"thermalConductivityOfVapor", "W / m / K"},
    {L"vaporPressure", "Pa"},
    {L"virialCoefficient", "m3 / mol"},
    {L"viscosityOfLiquid", "Pa s"},
    {L"viscosityOfVapor", "Pa s"},
    {L"volumeChangeUponMelting", "m3 / mol"},
    {L"volumeChangeUponSolidSolidPhaseTransition", "m3 / mol"},
    {L"volumeChangeUponSublimation", "m3 / mol"},
    {L"volumeChangeUponVaporization", "m3 / mol"},
    {L"volumeOfLiquid", "m3 / mol"},
    {L"volumeOfSolid", "m3 / mol"},
});

constexpr auto pressureDependentRows = std::to_array<UnitRow>({
    {L"boilingPointTemperature", "K"},
    {L"glassTransitionTemperature", "K"},
    {L"meltingTemperature", "K"},
    {L"solidSolidPhaseTransitionTemperature", "K"},
});

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
