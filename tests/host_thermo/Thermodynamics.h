/// What the tests of the property package share.
#pragma once

#include "PropertyPackage.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace solvane::host {

inline PropertyPackage packageOf(std::initializer_list<const char*> names) {
    std::vector<const Compound*> compounds;
    for (const char* name : names) {
        compounds.push_back(findCompound(name));
        EXPECT_NE(compounds.back(), nullptr) << name;
    }
    return PropertyPackage(std::move(compounds));
}

inline PropertyPackage lightGases() {
    return packageOf({"methane", "ethane", "propane", "n-butane", "n-pentane"});
}

inline std::vector<double> valuesOf(const PropertyPackage& package, PhaseProperty property, Phase phase,
                                    double temperature, double pressure,
                                    const std::vector<double>& composition) {
    std::vector<double> values;
    std::string error;
    EXPECT_TRUE(package.phaseProperty(property, phase, temperature, pressure, composition, values, error))
        << error;
    return values;
}

inline double valueOf(const PropertyPackage& package, PhaseProperty property, Phase phase, double temperature,
                      double pressure, const std::vector<double>& composition) {
    return valuesOf(package, property, phase, temperature, pressure, composition).at(0);
}

inline Equilibrium flashed(const PropertyPackage& package, const std::vector<double>& composition,
                           FlashCondition first, FlashCondition second) {
    Equilibrium result;
    std::string error;
    EXPECT_TRUE(package.flash(composition, first, second, result, error)) << error;
    return result;
}

inline double overall(const PropertyPackage& package, PhaseProperty property, const Equilibrium& state) {
    double sum = 0;
    for (const PhaseState& phase : state.phases) {
        sum += phase.fraction *
               valueOf(package, property, phase.phase, state.temperature, state.pressure, phase.composition);
    }
    return sum;
}

inline double vaporFractionOf(const Equilibrium& state) {
    return state.phases.at(0).phase == Phase::vapor ? state.phases[0].fraction : 0;
}

} // namespace solvane::host
