#include "Feed.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <tuple>

namespace solvane::host {

namespace {

using enum FlashVariable;

/// No phase of any composition lies below the tangent plane of the state.
void expectStable(const Feed& feed, const Equilibrium& state, std::mt19937& random) {
    const PhaseState& phase = state.phases[0];
    const std::vector<double> fugacity = valuesOf(feed.package, PhaseProperty::fugacity, phase.phase,
                                                  state.temperature, state.pressure, phase.composition);
    std::exponential_distribution<double> share;
    for (int trial = 0; trial < 40; ++trial) {
        std::vector<double> w(fugacity.size());
        double total = 0;
        for (std::size_t i = 0; i < w.size(); ++i) {
            // Cubed, the shares reach traces as well.
            w[i] = fugacity[i] > 0 ? std::pow(share(random), 3) : 0;
            total += w[i];
        }
        for (Phase kind : {Phase::vapor, Phase::liquid}) {
            const std::vector<double> other =
                valuesOf(feed.package, PhaseProperty::fugacity, kind, state.temperature, state.pressure, w);
            double distance = 0;
            for (std::size_t i = 0; i < w.size(); ++i)
                if (w[i] > 0)
                    distance += w[i] / total * std::log(other[i] / fugacity[i]);
            EXPECT_GT(distance, -1e-9);
        }
    }
}

} // namespace

TEST(Flash, phasesAreInStableEquilibriumOverAGridOfStates) {
    std::mt19937 random(1);
    int twoPhases = 0;
    for (const Feed& feed : feeds()) {
        for (double t : {180.0, 220.0, 250.0, 280.0, 310.0, 340.0, 400.0, 600.0}) {
            for (double p : {1e3, 1e5, 5e5, 20e5, 60e5, 100e5, 300e5}) {
                SCOPED_TRACE(testing::Message()
                             << feed.package.compounds()[0]->name << " " << t << " K, " << p << " Pa");
                const Equilibrium state =
                    flashed(feed.package, feed.composition, {temperature, t}, {pressure, p});
                expectEquilibrium(feed, state);
                if (!formsTwoLiquids(feed))
                    expectStable(feed, state, random);
                twoPhases += state.phases.size() == 2;
            }
        }
    }
    EXPECT_GT(twoPhases, 70);
}

TEST(Flash, randomStatesSatisfyTheEquations) {
    std::mt19937 random(5);
    std::exponential_distribution<double> share;
    std::uniform_real_distribution<double> anyTemperature(150, 500),
        logPressure(std::log(1e4), std::log(2e7));
    int twoPhases = 0;
    for (int i = 0; i < 300; ++i) {
        std::vector<double> z(5);
        std::ranges::generate(z, [&] { return share(random); });
        const double total = std::accumulate(z.begin(), z.end(), 0.0);
        std::ranges::for_each(z, [total](double& fraction) { fraction /= total; });
        const Feed feed{lightGases(), z};
        const FlashCondition p{pressure, std::exp(logPressure(random))};
        const Equilibrium state = flashed(feed.package, z, {temperature, anyTemperature(random)}, p);
        SCOPED_TRACE(testing::Message() << i << ": " << state.temperature << " K, " << p.value << " Pa");
        expectEquilibrium(feed, state);
        expectStable(feed, state, random);
        twoPhases += state.phases.size() == 2;
        for (const auto& [variable, property, scale] : {std::tuple(enthalpy, PhaseProperty::enthalpy, 1e4),
                                                        std::tuple(entropy, PhaseProperty::entropy, 10.)}) {
            const double value = overall(feed.package, property, state);
            const Equilibrium back = flashed(feed.package, z, p, {variable, value});
            expectEquilibrium(feed, back);
            EXPECT_NEAR(overall(feed.package, property, back), value, 1e-10 * (std::abs(value) + scale));
            EXPECT_NEAR(back.temperature, state.temperature, 1e-10 * state.temperature);
        }
    }
    EXPECT_GT(twoPhases, 80);
}

// Every pair of conditions that leaves no choice of states. Where there are others of the same enthalpy or
// internal energy at that temperature, the one that is found has the lower pressure.
TEST(Flash, everyPropertyLeadsBackToTheState) {
    struct Row {
        FlashVariable variable;
        PhaseProperty property;
        bool isUnique; // at a temperature
    };
    constexpr Row rows[] = {
        {enthalpy, PhaseProperty::enthalpy, false},  {enthalpyF, PhaseProperty::enthalpyF, false},
        {entropyNF, PhaseProperty::entropyNF, true}, {entropyF, PhaseProperty::entropyF, true},
        {volume, PhaseProperty::volume, true},       {internalEnergy, PhaseProperty::internalEnergy, false},
    };
    for (const Feed& feed : feeds()) {
        for (double t : {200.0, 265.0, 330.0, 500.0}) {
            for (double p : {1e5, 20e5, 80e5}) {
                const Equilibrium state =
                    flashed(feed.package, feed.composition, {temperature, t}, {pressure, p});
                for (const Row& row : rows) {
                    SCOPED_TRACE(testing::Message() << feed.package.compounds()[0]->name << " " << t << " K, "
                                                    << p << " Pa, " << static_cast<int>(row.variable));
                    if (formsTwoLiquids(feed) && (row.variable == volume || row.variable == internalEnergy))
                        continue; // they jump up and down where the second liquid is missing
                    const double value = overall(feed.package, row.property, state);
                    const FlashCondition given{row.variable, value};
                    const Equilibrium back = flashed(feed.package, feed.composition, given, {pressure, p});
                    EXPECT_NEAR(back.temperature, t, 1e-7);
                    EXPECT_NEAR(vaporFractionOf(back), vaporFractionOf(state), 1e-7);

                    const Equilibrium same = flashed(feed.package, feed.composition, given, {temperature, t});
                    EXPECT_NEAR(overall(feed.package, row.property, same), value,
                                1e-9 * (std::abs(value) + (row.variable == volume ? 0 : 1e4)));
                    EXPECT_LT(same.pressure, p * (1 + 1e-6));
                    if (row.isUnique) {
                        EXPECT_NEAR(same.pressure, p, 1e-6 * p);
                        EXPECT_NEAR(vaporFractionOf(same), vaporFractionOf(state), 1e-6);
                    }
                }
            }
        }
    }
}

// Enthalpy at a temperature, and both along a line of a vapour fraction, turn back between two places at
// which a search looks.
TEST(Flash, findsStatesNextToWhereAPropertyTurnsBack) {
    struct Row {
        Feed feed;
        FlashCondition fixed;
        FlashVariable property;
        PhaseProperty value;
        double temperature;
    };
    const Feed light{packageOf({"n-butane", "methane"}), {0.389, 0.611}};
    const Feed rich{packageOf({"nitrogen", "benzene", "carbon monoxide", "n-pentane"}),
                    {0.071, 0.069, 0.685, 0.175}};
    const Row rows[] = {
        {{packageOf({"oxygen"}), {1}}, {pressure, 1.344e5}, enthalpy, PhaseProperty::enthalpy, 92.1607},
        {{packageOf({"propane"}), {1}}, {pressure, 2.578e7}, enthalpy, PhaseProperty::enthalpy, 375.115},
        {light, {vaporFraction, 0.813318}, enthalpy, PhaseProperty::enthalpy, 357.61},
        {rich, {vaporFraction, 0.871332}, internalEnergy, PhaseProperty::internalEnergy, 403.95},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.temperature);
        const FlashCondition given{temperature, row.temperature};
        const Equilibrium state = flashed(row.feed.package, row.feed.composition, given, row.fixed);
        const double value = overall(row.feed.package, row.value, state);
        const Equilibrium back = flashed(row.feed.package, row.feed.composition, {row.property, value},
                                         row.fixed.variable == vaporFraction ? row.fixed : given);
        EXPECT_NEAR(overall(row.feed.package, row.value, back), value, 1e-8 * std::abs(value));
    }
}

TEST(Flash, pureCompoundBoilsByTheLeverRule) {
    const PropertyPackage package = packageOf({"methane", "benzene"});
    const std::vector<double> benzene{0, 1};
    const Equilibrium boiling = flashed(package, benzene, {pressure, 101325}, {vaporFraction, 0.5});
    for (const auto& [variable, property] :
         {std::pair(enthalpy, PhaseProperty::enthalpy), std::pair(entropy, PhaseProperty::entropy)}) {
        const auto at = [&](Phase phase) {
            return valueOf(package, property, phase, boiling.temperature, 101325, benzene);
        };
        for (double fraction : {0.01, 0.3, 0.999}) {
            const double value = fraction * at(Phase::vapor) + (1 - fraction) * at(Phase::liquid);
            const Equilibrium state = flashed(package, benzene, {pressure, 101325}, {variable, value});
            EXPECT_NEAR(state.temperature, boiling.temperature, 1e-9);
            ASSERT_EQ(state.phases.size(), 2u);
            EXPECT_NEAR(state.phases[0].fraction, fraction, 1e-9);
            EXPECT_EQ(state.phases[0].composition, benzene);
            const Equilibrium same =
                flashed(package, benzene, {temperature, boiling.temperature}, {variable, value});
            EXPECT_NEAR(same.pressure, 101325, 1e-6);
            EXPECT_NEAR(vaporFractionOf(same), fraction, 1e-9);
        }
    }
    const double below = boiling.temperature - 1e-6;
    const double above = boiling.temperature + 1e-6;
    EXPECT_EQ(flashed(package, benzene, {temperature, below}, {pressure, 101325}).phases.at(0).phase,
              Phase::liquid);
    EXPECT_EQ(flashed(package, benzene, {temperature, above}, {pressure, 101325}).phases.at(0).phase,
              Phase::vapor);
}

// Bubble and dew point a few nanokelvins apart: temperature hardly distinguishes the states between them.
TEST(Flash, nearlyPureCompoundBoils) {
    const Feed feed{packageOf({"propane", "n-butane"}), {1 - 1e-10, 1e-10}};
    const Equilibrium boiling =
        flashed(feed.package, feed.composition, {pressure, 5e5}, {vaporFraction, 0.4});
    const double value = overall(feed.package, PhaseProperty::enthalpy, boiling);
    const Equilibrium state = flashed(feed.package, feed.composition, {pressure, 5e5}, {enthalpy, value});
    EXPECT_NEAR(state.temperature, boiling.temperature, 1e-7);
    EXPECT_NEAR(overall(feed.package, PhaseProperty::enthalpy, state), value, 1e-6 * std::abs(value));
    EXPECT_NEAR(vaporFractionOf(state), 0.4, 1e-6);
}

TEST(Flash, namesASinglePhaseByItsDensity) {
    struct Row {
        PropertyPackage package;
        std::vector<double> composition;
        double temperature;
        double pressure;
        Phase phase;
    };
    const PropertyPackage methane = packageOf({"methane"});
    const Row rows[] = {
        {methane, {1}, 110, 10e5, Phase::liquid},
        {methane, {1}, 150, 1e5, Phase::vapor},
        {methane, {1}, 300, 100e5, Phase::vapor},
        {methane, {1}, 300, 1000e5, Phase::liquid},
        // The bounds of temperature and pressure.
        {methane, {1}, 50, 1e-3, Phase::vapor},
        {methane, {1}, 50, 1e9, Phase::liquid},
        {methane, {1}, 3000, 1e9, Phase::liquid},
        // Two liquids count as one.
        {packageOf({"water", "n-pentane"}), {0.5, 0.5}, 300, 20e5, Phase::liquid},
    };
    for (const Row& row : rows) {
        const Equilibrium state =
            flashed(row.package, row.composition, {temperature, row.temperature}, {pressure, row.pressure});
        ASSERT_EQ(state.phases.size(), 1u) << row.temperature << " K, " << row.pressure << " Pa";
        EXPECT_EQ(state.phases[0].phase, row.phase) << row.temperature << " K, " << row.pressure << " Pa";
    }
}

TEST(Flash, findsAVaporBesideALiquidThatIsHardToSee) {
    // The amounts of water in this vapour are far below the rounding of the Gibbs energy.
    const Feed frozen{packageOf({"methane", "water"}), {0.02, 0.98}};
    // Beside this vapour there is one liquid, although the equation prefers two and no vapour.
    const Feed oily{packageOf({"ethane", "water", "benzene"}), {0.0749, 0.4297, 0.4954}};
    // Two liquids, too, attract the search for this vapour.
    const Feed cold{packageOf({"carbon monoxide", "oxygen", "methane", "benzene"}),
                    {0.3102, 0.0371, 0.0943, 0.5584}};
    // A liquid with more of the gas than the first estimate of a second phase.
    const Feed wet{packageOf({"n-pentane", "methane", "water", "carbon dioxide", "hydrogen"}),
                   {0.0132, 0.0147, 0.7560, 0.2126, 0.0035}};
    // Close to the critical point, where the phases gain some 1e-6 RT.
    const Feed critical{lightGases(), {0.1045, 0.3377, 0.1715, 0.1570, 0.2293}};
    const auto expectBoth = [](const Feed& feed, double t, double p) {
        SCOPED_TRACE(testing::Message() << t << " K");
        const Equilibrium state = flashed(feed.package, feed.composition, {temperature, t}, {pressure, p});
        ASSERT_EQ(state.phases.size(), 2u);
        expectEquilibrium(feed, state);
    };
    for (double t = 60; t < 80; ++t)
        expectBoth(frozen, t, 500);
    expectBoth(oily, 280.2, 14176);
    expectBoth(cold, 119, 2.109e6);
    expectBoth(wet, 131.38, 3.298e5);
    expectBoth(critical, 398.03, 6.378e6);
}

TEST(Flash, compositionIsNormalisedAndAbsentCompoundsChangeNothing) {
    const Equilibrium all =
        flashed(lightGases(), {0.6, 0, 0.3, 0.1, 0}, {temperature, 250}, {pressure, 20e5});
    const Equilibrium few = flashed(packageOf({"methane", "propane", "n-butane"}), {6, 3, 1},
                                    {pressure, 20e5}, {temperature, 250});
    ASSERT_EQ(all.phases.size(), 2u);
    EXPECT_NEAR(all.phases[0].fraction, few.phases.at(0).fraction, 1e-14);
    for (std::size_t k = 0; k < 2; ++k) {
        const std::vector<double>& x = all.phases[k].composition;
        EXPECT_EQ(x[1], 0);
        EXPECT_EQ(x[4], 0);
        EXPECT_NEAR(x[2], few.phases.at(k).composition[1], 1e-14);
    }
}

} // namespace solvane::host
