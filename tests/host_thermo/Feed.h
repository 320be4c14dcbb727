/// Feeds of the flash tests, and what every equilibrium must fulfil.
#pragma once

#include "Thermodynamics.h"

#include <cmath>

namespace solvane::host {

/// A package and a composition.
struct Feed {
    PropertyPackage package;
    std::vector<double> composition;
};

inline std::vector<Feed> feeds() {
    return {{lightGases(), {0.50, 0.20, 0.15, 0.10, 0.05}},
            {lightGases(), {0.95, 0, 0, 0.05, 0}},
            {lightGases(), {1e-9, 1e-5, 0.59, 0.409989999, 0}},
            {packageOf({"nitrogen", "methane", "carbon dioxide", "n-butane"}), {0.2, 0.4, 0.3, 0.1}},
            {packageOf({"benzene", "toluene", "n-pentane"}), {0.3, 0.3, 0.4}},
            {packageOf({"carbon dioxide", "water", "ethane"}), {0.5, 0.5, 0}}};
}

/// At low temperatures the equation prefers two liquids of this feed to one.
inline bool formsTwoLiquids(const Feed& feed) {
    return feed.package.compounds()[1]->name == "water";
}

/// K values are vapour over liquid, and their logarithms say the same.
inline void expectRatios(const Feed& feed, const Equilibrium& state) {
    const std::vector<double>&y = state.phases[0].composition, &x = state.phases[1].composition;
    std::vector<double> ratios, logarithms;
    std::string error;
    const TwoPhases phases{{Phase::vapor, Phase::liquid}, {y, x}};
    for (const auto& [property, values] :
         {std::pair(TwoPhaseProperty::kvalue, &ratios), std::pair(TwoPhaseProperty::logKvalue, &logarithms)})
        EXPECT_TRUE(feed.package.twoPhaseProperty(property, phases, state.temperature, state.pressure,
                                                  *values, error))
            << error;
    for (std::size_t i = 0; i < feed.composition.size(); ++i) {
        if (feed.composition[i] == 0)
            continue;
        EXPECT_NEAR(ratios[i], y[i] / x[i], 1e-9 * ratios[i]);
        EXPECT_NEAR(logarithms[i], std::log(y[i] / x[i]), 1e-9);
    }
}

/// Equal fugacities and the material balance, to the last digits but three.
inline void expectEquilibrium(const Feed& feed, const Equilibrium& state) {
    std::vector<std::vector<double>> fugacities;
    double total = 0;
    for (const PhaseState& phase : state.phases) {
        fugacities.push_back(valuesOf(feed.package, PhaseProperty::fugacity, phase.phase, state.temperature,
                                      state.pressure, phase.composition));
        total += phase.fraction;
    }
    EXPECT_NEAR(total, 1, 1e-12);
    for (std::size_t i = 0; i < feed.composition.size(); ++i) {
        double amount = 0;
        for (const PhaseState& phase : state.phases)
            amount += phase.fraction * phase.composition[i];
        EXPECT_NEAR(amount, feed.composition[i], 1e-12 * feed.composition[i]);
        if (state.phases.size() == 2) {
            EXPECT_NEAR(fugacities[0][i], fugacities[1][i], 1e-10 * fugacities[0][i]);
        }
    }
    if (state.phases.size() == 2)
        expectRatios(feed, state);
}

} // namespace solvane::host
