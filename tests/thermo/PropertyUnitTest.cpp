#include "Rig.h"

#include <gtest/gtest.h>

namespace solvane {

namespace {

TEST(PropertyUnit, eachNameHasItsUnit) {
    const struct {
        const char* unit;
        std::vector<const char*> names;
    } rows[] = {
        {"K", {"temperature", "CRITICALTEMPERATURE", "triplePointTemperature ", "meltingTemperature"}},
        {"Pa", {"pressure", "triplePointPressure", "glassTransitionPressure"}},
        {"",
         {"fraction", "casRegistryNumber", "dielectricConstant", "fugacityCoefficient", "logKvalues",
          "activity.DmolFraction"}},
        {"M", {"gyrationRadius"}},
        {"m3 / mol",
         {"vanderwaalsVolume", "virialCoefficient", "excessVolume", "volume.Dmoles", "excessVolume.Dmoles"}},
        {"m3 kg0.25 / (s 0.5 mol)", {"parachor"}},
        {"J / mol", {"standardEntropySolid", "energy"}},
        {"1 / K", {"expansivity", "activity.Dtemperature"}},
        {"J / mol / K", {"heatCapacityOfLiquid", "entropyNF", "enthalpy.Dtemperature"}},
        {"K / Pa", {"jouleThomsonCoefficient", "meltingTemperature.Dpressure"}},
        {"N m", {"surfaceTension", "surfaceTension.DmolFraction"}},
        {"mol / m3 / Pa", {"density.dPRESSURE"}},
        {"Pa s / mol", {"viscosity.Dmoles"}},
        {"Pa / mol", {"vaporPressure.Dmoles"}},
        {"gr / mol / K", {"molecularWeight.Dtemperature"}},
    };
    Rig rig;
    for (const auto& row : rows)
        for (const char* name : row.names) {
            Reply reply = rig.send(wireOf(11u, name));
            EXPECT_EQ(reply.word(), 0u) << name;
            EXPECT_EQ(reply.text(), row.unit) << name;
        }
}

TEST(PropertyUnit, otherNamesAreRefused) {
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
