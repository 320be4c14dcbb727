#include "Thermodynamics.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

TEST(PureProperties, derivativesAgreeWithDifferencesUpToTheCriticalPoint) {
    for (const Compound& compound : allCompounds()) {
        for (const PurePropertyRow& row : pureProperties()) {
            for (const double reduced : {0.5, 0.7, 0.95}) {
                SCOPED_TRACE(testing::Message() << row.name << " of " << compound.name << " at " << reduced);
                const bool byTemperature = row.argument == PureArgument::temperature;
                const double at =
                    reduced * (byTemperature ? compound.criticalTemperature : compound.criticalPressure);
                const double step = 1e-4 * at;
                const Dual value = row.value(compound, at);
                const double slope =
                    (row.value(compound, at + step).value - row.value(compound, at - step).value) /
                    (2 * step);
                EXPECT_NEAR(value.slope, slope, 1e-5 * std::abs(slope) + 1e-7 * std::abs(value.value / at));
            }
        }
    }
}

// Measured, of the NIST Chemistry WebBook. Tolerances are what cubic equations and corresponding states miss
// by.
TEST(PureProperties, areNearThoseOfNature) {
    struct Row {
        std::string_view property;
        const char* compound;
        double temperature, measured, tolerance;
    };
    constexpr Row rows[] = {
        {"vaporPressure", "n-butane", 300, 2.576e5, 0.01},
        {"heatOfVaporization", "propane", 300, 14.70e3, 0.03},
        {"volumeOfLiquid", "toluene", 300, 107.1e-6, 0.03},
        {"heatCapacityOfLiquid", "n-pentane", 300, 168, 0.06},
        {"surfaceTensionSatLiquid", "methane", 111.6, 13.3e-3, 0.12},
        {"surfaceTensionSatLiquid", "water", 373.2, 58.9e-3, 0.12},
        {"virialCoefficient", "carbon dioxide", 300, -122e-6, 0.1},
        {"viscosityOfVapor", "oxygen", 300, 20.7e-6, 0.03},
        {"viscosityOfVapor", "hydrogen", 300, 8.95e-6, 0.2},
        {"thermalConductivityOfVapor", "carbon monoxide", 300, 26.6e-3, 0.06},
        {"viscosityOfLiquid", "water", 300, 854e-6, 0.1},
        {"thermalConductivityOfLiquid", "toluene", 300, 130.5e-3, 0.1},
    };
    for (const Row& row : rows) {
        const auto property = std::ranges::find(pureProperties(), row.property, &PurePropertyRow::name);
        EXPECT_NEAR(property->value(*findCompound(row.compound), row.temperature).value, row.measured,
                    row.tolerance * std::abs(row.measured))
            << row.property << " of " << row.compound;
    }
}

} // namespace solvane::host
