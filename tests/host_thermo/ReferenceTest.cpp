#include "Thermodynamics.h"

#include <array>

namespace solvane::host {

namespace {

struct ReferenceState {
    bool byVaporFraction;
    std::array<double, 10> feed; // of compoundsOfTheTable()
    double temperature, pressure, vaporFraction;
    std::array<double, 10> vapor, liquid;
    double vaporEnthalpy, liquidEnthalpy, vaporEntropy, liquidEntropy, vaporVolume, liquidVolume;
};

constexpr ReferenceState referenceStates[] = {
#include "ReferenceStates.inc"
};

PropertyPackage compoundsOfTheTable() {
    return packageOf({"methane", "ethane", "propane", "n-butane", "n-pentane", "nitrogen", "carbon dioxide",
                      "water", "benzene", "toluene"});
}

void expectNear(double value, double reference, const char* what) {
    EXPECT_NEAR(value, reference, 1e-9 * std::abs(reference) + 1e-13) << what;
}

void expectState(const PropertyPackage& package, const Equilibrium& state, const ReferenceState& reference) {
    expectNear(state.temperature, reference.temperature, "temperature");
    expectNear(state.pressure, reference.pressure, "pressure");
    ASSERT_EQ(state.phases.size(), 2u);
    expectNear(state.phases[0].fraction, reference.vaporFraction, "vapor fraction");
    const auto& [vapor, liquid] = std::tie(state.phases[0].composition, state.phases[1].composition);
    for (std::size_t i = 0; i < reference.feed.size(); ++i) {
        expectNear(vapor[i], reference.vapor[i], "vapor composition");
        expectNear(liquid[i], reference.liquid[i], "liquid composition");
    }
    const auto at = [&](PhaseProperty property, Phase phase) {
        return valueOf(package, property, phase, state.temperature, state.pressure,
                       phase == Phase::vapor ? vapor : liquid);
    };
    expectNear(at(PhaseProperty::enthalpyNF, Phase::vapor), reference.vaporEnthalpy, "vapor enthalpy");
    expectNear(at(PhaseProperty::enthalpyNF, Phase::liquid), reference.liquidEnthalpy, "liquid enthalpy");
    expectNear(at(PhaseProperty::entropyNF, Phase::vapor), reference.vaporEntropy, "vapor entropy");
    expectNear(at(PhaseProperty::entropyNF, Phase::liquid), reference.liquidEntropy, "liquid entropy");
    expectNear(at(PhaseProperty::volume, Phase::vapor), reference.vaporVolume, "vapor volume");
    expectNear(at(PhaseProperty::volume, Phase::liquid), reference.liquidVolume, "liquid volume");
}

} // namespace

// The states come from another program with other methods: reference/pr_reference.m.
TEST(Reference, statesAgreeWithAnIndependentCalculation) {
    const PropertyPackage package = compoundsOfTheTable();
    for (const ReferenceState& reference : referenceStates) {
        SCOPED_TRACE(testing::Message() << reference.temperature << " K, " << reference.pressure
                                        << " Pa, vapor fraction " << reference.vaporFraction);
        const std::vector<double> feed(reference.feed.begin(), reference.feed.end());
        const FlashCondition temperature{FlashVariable::temperature, reference.temperature};
        const FlashCondition pressure{FlashVariable::pressure, reference.pressure};
        const FlashCondition vaporFraction{FlashVariable::vaporFraction, reference.vaporFraction};
        if (reference.byVaporFraction) {
            expectState(package, flashed(package, feed, temperature, vaporFraction), reference);
            expectState(package, flashed(package, feed, vaporFraction, pressure), reference);
        } else {
            expectState(package, flashed(package, feed, temperature, pressure), reference);
        }
    }
}

} // namespace solvane::host
