#include "Rig.h"

#include <gtest/gtest.h>

#include <sstream>

namespace solvane {

namespace {

TEST(PropertyUnit, returnsTheUnitOfEachName) {
    const struct {
        const char* unit;
        const char* names; ///< separated by commas
    } rows[] = {
        {"K", "temperature,CRITICALTEMPERATURE,energyLennardJones,normalBoilingPoint,"
              "normalFreezingPoint,triplePointTemperature ,boilingPointTemperature,"
              "glassTransitionTemperature,meltingTemperature,solidSolidPhaseTransitionTemperature"},
        {"Pa", "pressure,criticalPressure,triplePointPressure,glassTransitionPressure,meltingPressure,"
               "solidSolidPhaseTransitionPressure,sublimationPressure,vaporPressure,fugacity"},
        {"", "fraction,casRegistryNumber,chemicalFormula,iupacName,SMILESformula,acentricFactor,"
             "associationParameter,charge,criticalCompressibilityFactor,dielectricConstant,"
             "fugacityCoefficientOfVapor,activity,activityCoefficient,compressibilityFactor,"
             "dissociationConstant,fugacityCoefficient,logFugacity,logFugacityCoefficient,"
             "meanActivityCoefficient,osmoticCoefficient,pH,pOH,kvalue,logKvalue,kvalues,logKvalues,"
             "activity.DmolFraction"},
        {"unit", "name"},
        {"mol / s", "flow,totalFlow"},
        {"m", "bornRadius,lengthLennardJones"},
        {"M", "gyrationRadius"},
        {"m3", "diffusionVolume"},
        {"C m", "dipoleMoment"},
        {"mol / m3", "criticalDensity,liquidDensityAt25C,density"},
        {"m3 / mol", "criticalVolume,liquidVolumeAt25C,vanderwaalsVolume,virialCoefficient,"
                     "volumeChangeUponMelting,volumeChangeUponSolidSolidPhaseTransition,"
                     "volumeChangeUponSublimation,volumeChangeUponVaporization,volumeOfLiquid,volumeOfSolid,"
                     "volume,excessVolume,volume.Dmoles,excessVolume.Dmoles"},
        {"m2 / mol", "vanderwaalsArea"},
        {"gr / mol", "molecularWeight"},
        {"m3 kg0.25 / (s 0.5 mol)", "parachor"},
        {"J / mol", "heatOfFusionAtNormalFreezingPoint,heatOfVaporizationAtNormalBoilingPoint,"
                    "idealGasEnthalpyOfFormationAt25C,idealGasGibbsFreeEnergyOfFormationAt25C,"
                    "standardEntropyGas,standardEntropyLiquid,standardEntropySolid,"
                    "standardEnthalpyAqueousDilution,standardFormationEnthalpyGas,"
                    "standardFormationEnthalpyLiquid,standardFormationEnthalpySolid,"
                    "standardFormationGibbsEnergyGas,standardFormationGibbsEnergyLiquid,"
                    "standardFormationGibbsEnergySolid,standardGibbsAqueousDilution,heatOfFusion,"
                    "heatOfSublimation,heatOfSolidSolidPhaseTransition,heatOfVaporization,idealGasEnthalpy,"
                    "enthalpy.Dmoles,enthalpyF.Dmoles,enthalpyNF.Dmoles,gibbsEnergy.Dmoles,"
                    "gibbsFreeEnergy.Dmoles,helmholtzEnergy.Dmoles,helmholtzFreeEnergy.Dmoles,"
                    "internalEnergy.Dmoles,energy.Dmoles,excessEnthalpy.Dmoles,excessGibbsEnergy.Dmoles,"
                    "excessGibbsFreeEnergy.Dmoles,excessHelmholtzEnergy.Dmoles,"
                    "excessHelmholtzFreeEnergy.Dmoles,excessInternalEnergy.Dmoles"},
        {"J / mol / K", "cpAqueousInfiniteDilution,heatCapacityOfLiquid,heatCapacityOfSolid,idealGasEntropy,"
                        "idealGasHeatCapacity,enthalpy.Dtemperature,entropy.Dmoles,entropyF.Dmoles,"
                        "entropyNF.Dmoles,excessEntropy.Dmoles,heatCapacity.Dmoles,heatCapacityCp.Dmoles,"
                        "heatCapacityCv.Dmoles"},
        {"1 / K", "expansivity,activity.Dtemperature"},
        {"1 / Pa", "compressibility"},
        {"m2 / s", "selfDiffusionCoefficientGas,selfDiffusionCoefficientLiquid,diffusionCoefficient"},
        {"N / m", "surfaceTensionSatLiquid"},
        {"N m", "surfaceTension,surfaceTension.DmolFraction"},
        {"W / m / K", "thermalConductivityOfLiquid,thermalConductivityOfSolid,thermalConductivityOfVapor,"
                      "thermalConductivity"},
        {"Pa s", "viscosityOfLiquid,viscosityOfVapor,viscosity"},
        {"m / s", "speedOfSound"},
        {"K / Pa", "jouleThomsonCoefficient,meltingTemperature.Dpressure"},
        {"mol / m3 / Pa", "density.dPRESSURE"},
        {"Pa s / mol", "viscosity.Dmoles"},
        {"Pa / mol", "vaporPressure.Dmoles,fugacity.Dmoles"},
        {"gr / mol / K", "molecularWeight.Dtemperature"},
    };
    Rig rig;
    for (const auto& row : rows) {
        std::istringstream names(row.names);
        for (std::string name; std::getline(names, name, ',');) {
            Reply reply = rig.send(wireOf(11u, name));
            EXPECT_EQ(reply.word(), 0u) << name;
            EXPECT_EQ(reply.text(), row.unit) << name;
        }
    }
}

TEST(PropertyUnit, rejectsOtherNames) {
    const struct {
        const char* name;
        const char* failure;
    } rows[] = {
        {"Temperature", "Unknown property: Temperature"},
        {"triplePointTemperature", "Unknown property: triplePointTemperature"},
        {"enthalpy.Dfoo", "Unknown property derivative: Dfoo"},
        {"nonsense.Dfoo", "Unknown property derivative: Dfoo"},
        {"nonsense.Dmoles", "Unknown property: nonsense"},
        {"enthalpy.Dmoles.Dmoles", "Unknown property derivative: Dmoles.Dmoles"},
        {"enthalpy.", "Unknown property derivative: "},
        {"criticalTemperature.Dpressure", "Unknown property: criticalTemperature"},
        {"", "Unknown property: "},
    };
    Rig rig;
    for (const auto& row : rows)
        EXPECT_EQ(rig.failureOf(wireOf(11u, row.name)), row.failure);
}

} // namespace

} // namespace solvane
