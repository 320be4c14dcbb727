// Flashes at a given vapour fraction.
#include "Feed.h"

namespace solvane::host {

using enum FlashVariable;

TEST(VaporFraction, isFoundWithAnotherProperty) {
    for (const Feed& feed :
         {Feed{lightGases(), {0.50, 0.20, 0.15, 0.10, 0.05}}, Feed{packageOf({"propane"}), {1}}}) {
        for (const double fraction : {0.0, 0.7, 1.0}) {
            // The last is close to propane's critical point.
            for (const double t : {200.0, feed.composition.size() == 1 ? 369.0 : 280.0}) {
                const Equilibrium state =
                    flashed(feed.package, feed.composition, {temperature, t}, {vaporFraction, fraction});
                for (const auto& [variable, property] :
                     {std::pair(volume, PhaseProperty::volume), std::pair(entropy, PhaseProperty::entropy),
                      std::pair(enthalpyF, PhaseProperty::enthalpyF)}) {
                    SCOPED_TRACE(testing::Message()
                                 << feed.composition.size() << " compounds, " << t << " K, " << fraction
                                 << ", " << static_cast<int>(variable));
                    const double value = overall(feed.package, property, state);
                    const Equilibrium back =
                        flashed(feed.package, feed.composition, {variable, value}, {vaporFraction, fraction});
                    EXPECT_NEAR(overall(feed.package, property, back), value, 1e-9 * std::abs(value));
                    EXPECT_EQ(back.phases.at(0).fraction, fraction);
                    EXPECT_LT(back.temperature, t * (1 + 1e-7));
                    expectEquilibrium(feed, back);
                }
            }
        }
    }
}

TEST(VaporFraction, liesBetweenBubbleAndDewPoint) {
    for (const Feed& feed : feeds()) {
        if (formsTwoLiquids(feed))
            continue; // its vapour fraction jumps where the gas would be the second liquid
        double lastTemperature = 0;
        for (double fraction : {0.0, 0.001, 0.35, 0.99, 1.0}) {
            SCOPED_TRACE(testing::Message() << feed.package.compounds()[0]->name << " " << fraction);
            const Equilibrium state =
                flashed(feed.package, feed.composition, {vaporFraction, fraction}, {pressure, 8e5});
            expectEquilibrium(feed, state);
            EXPECT_EQ(state.phases.at(0).fraction, fraction);
            EXPECT_GT(state.temperature, lastTemperature);
            lastTemperature = state.temperature;
            const Equilibrium back = flashed(feed.package, feed.composition, {temperature, state.temperature},
                                             {vaporFraction, fraction});
            EXPECT_NEAR(back.pressure, 8e5, 1e-3);
            if (fraction > 0 && fraction < 1) {
                const Equilibrium plain = flashed(feed.package, feed.composition,
                                                  {temperature, state.temperature}, {pressure, 8e5});
                EXPECT_NEAR(vaporFractionOf(plain), fraction, 1e-8);
            }
        }
    }
}

// The line of this fraction begins among cryogenic states of two liquids, far from those at room temperature.
TEST(VaporFraction, isFoundWhereTheLowPressureStatesAreTwoLiquids) {
    const Feed feed{packageOf({"nitrogen", "toluene"}), {0.41, 0.59}};
    const Equilibrium state =
        flashed(feed.package, feed.composition, {temperature, 333}, {vaporFraction, 0.3});
    expectEquilibrium(feed, state);
    EXPECT_NEAR(vaporFractionOf(
                    flashed(feed.package, feed.composition, {temperature, 333}, {pressure, state.pressure})),
                0.3, 1e-8);
}

// Close to the critical point, one phase counted twice solves the equations for any vapour fraction.
TEST(VaporFraction, rejectsOnePhaseCountedTwice) {
    const PropertyPackage package = packageOf({"methane", "carbon dioxide", "benzene"});
    const std::vector<double> feed{0.5537, 0.0053, 0.4410};
    int failures = 0;
    for (double t = 470; t < 510; t += 0.5) {
        Equilibrium state;
        std::string error;
        if (package.flash(feed, {temperature, t}, {vaporFraction, 0.3}, state, error)) {
            const Equilibrium plain = flashed(package, feed, {temperature, t}, {pressure, state.pressure});
            EXPECT_NEAR(vaporFractionOf(plain), 0.3, 1e-6) << t;
        } else {
            ++failures;
        }
    }
    EXPECT_GT(failures, 0);
    EXPECT_LT(failures, 80);
}

} // namespace solvane::host
