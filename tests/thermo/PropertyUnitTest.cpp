#include "Rig.h"

#include <gtest/gtest.h>

namespace solvane {

namespace {

TEST(PropertyUnit, eachNameHasItsUnit) {
    struct Row {
        const char* name;
        const char* unit;
    };
    const Row rows[] = {
        // of a stream
        {"temperature", "K"},
        {"pressure", "Pa"},
        {"fraction", ""},
        {"flow", "mol / s"},
        {"totalFlow", "mol / s"},
        // constants
        {"casRegistryNumber", ""},
        {"CRITICALTEMPERATURE", "K"},
        {"triplePointTemperature ", "K"},
        {"triplePointPressure", "Pa"},
        {"bornRadius", "m"},
        {"gyrationRadius", "M"},
        {"diffusionVolume", "m3"},
        {"dipoleMoment", "C m"},
        {"liquidDensityAt25C", "mol / m3"},
        {"vanderwaalsVolume", "m3 / mol"},
        {"vanderwaalsArea", "m2 / mol"},
        {"molecularWeight", "gr / mol"},
        {"parachor", "m3 kg0.25 / (s 0.5 mol)"},
        {"standardEntropySolid", "J / mol"},
        // of temperature, of pressure
        {"dielectricConstant", ""},
        {"expansivity", "1 / K"},
        {"heatCapacityOfLiquid", "J / mol / K"},
        {"surfaceTensionSatLiquid", "N / m"},
        {"virialCoefficient", "m3 / mol"},
        {"glassTransitionPressure", "Pa"},
        {"meltingTemperature", "K"},
        // of one phase and of two
        {"name", "unit"},
        {"fugacityCoefficient", ""},
        {"compressibility", "1 / Pa"},
        {"jouleThomsonCoefficient", "K / Pa"},
        {"thermalConductivity", "W / m / K"},
        {"entropyNF", "J / mol / K"},
        {"excessVolume", "m3 / mol"},
        {"energy", "J / mol"},
        {"logKvalues", ""},
        {"surfaceTension", "N m"},
        // derivatives
        {"enthalpy.Dtemperature", "J / mol / K"},
        {"density.dPRESSURE", "mol / m3 / Pa"},
        {"activity.Dtemperature", "1 / K"},
        {"viscosity.Dmoles", "Pa s / mol"},
        {"activity.Dmoles", "1 / mol"},
        {"volume.Dmoles", "m3 / mol"},
        {"excessVolume.Dmoles", "m3 / mol"},
        {"activity.DmolFraction", ""},
        {"surfaceTension.DmolFraction", "N m"},
        {"vaporPressure.Dmoles", "Pa / mol"},
        {"meltingTemperature.Dpressure", "K / Pa"},
        {"molecularWeight.Dtemperature", "gr / mol / K"},
    };
    Rig rig;
    for (const Row& row : rows) {
        Reply reply = rig.send(Request(11).text(row.name));
        EXPECT_EQ(reply.word(), 0u) << row.name;
        EXPECT_EQ(reply.text(), row.unit) << row.name;
    }
}

TEST(PropertyUnit, otherNamesAreRefused) {
    struct Row {
        const char* name;
        const char* failure;
    };
    const Row rows[] = {
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
    for (const Row& row : rows)
        EXPECT_EQ(rig.failureOf(Request(11).text(row.name)), row.failure);
}

} // namespace

} // namespace solvane
