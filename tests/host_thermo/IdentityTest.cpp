#include "IdealGas.h"
#include "PengRobinson.h"
#include "Thermodynamics.h"

#include <cmath>

namespace solvane::host {

namespace {

struct State {
    Phase phase;
    double temperature;
    double pressure;
};

// A thin gas, gases, liquids, a dense supercritical fluid, and a liquid that is metastable.
constexpr State states[] = {
    {Phase::vapor, 300, 10},    {Phase::vapor, 320, 20e5},  {Phase::vapor, 900, 150e5},
    {Phase::liquid, 180, 30e5}, {Phase::liquid, 250, 90e5}, {Phase::vapor, 450, 400e5},
    {Phase::liquid, 200, 1e5},
};
const std::vector<double> composition{0.30, 0.25, 0.15, 0.20, 0.10};

PropertyPackage mixed() {
    return packageOf({"methane", "carbon dioxide", "propane", "n-pentane", "toluene"});
}

/// Gibbs energy of `moles` (not normalised) of mixture, J.
double gibbs(const PropertyPackage& package, const State& state, const std::vector<double>& moles) {
    double total = 0;
    for (double n : moles) {
        total += n;
    }
    const auto value = [&](PhaseProperty property) {
        return valueOf(package, property, state.phase, state.temperature, state.pressure, moles);
    };
    return total * (value(PhaseProperty::enthalpyNF) - state.temperature * value(PhaseProperty::entropyNF));
}

double centralDifference(const auto& function, double at, double step) {
    return (function(at + step) - function(at - step)) / (2 * step);
}

} // namespace

TEST(Identities, fugacitiesAreThePartialGibbsEnergies) {
    const PropertyPackage package = mixed();
    for (const State& state : states) {
        SCOPED_TRACE(testing::Message() << state.temperature << " K, " << state.pressure << " Pa");
        const State thin{Phase::vapor, state.temperature, 1e-2};
        const std::vector<double> fugacity = valuesOf(package, PhaseProperty::fugacity, state.phase,
                                                      state.temperature, state.pressure, composition);
        double sum = 0;
        for (std::size_t i = 0; i < composition.size(); ++i) {
            const auto partial = [&](const State& where) {
                return centralDifference(
                    [&](double amount) {
                        std::vector<double> moles = composition;
                        moles[i] = amount;
                        return gibbs(package, where, moles);
                    },
                    composition[i], 1e-4);
            };
            const double rt = gasConstant * state.temperature;
            EXPECT_NEAR((partial(state) - partial(thin)) / rt,
                        std::log(fugacity[i] / (composition[i] * thin.pressure)), 1e-5);
            sum += composition[i] * std::log(fugacity[i] / (composition[i] * thin.pressure));
        }
        EXPECT_NEAR(gibbs(package, state, composition) - gibbs(package, thin, composition),
                    sum * gasConstant * state.temperature, 1e-5);
    }
}

TEST(Identities, enthalpyEntropyAndVolumeAreSlopesOfTheGibbsEnergy) {
    const PropertyPackage package = mixed();
    for (const State& state : states) {
        SCOPED_TRACE(testing::Message() << state.temperature << " K, " << state.pressure << " Pa");
        const auto value = [&](PhaseProperty property) {
            return valueOf(package, property, state.phase, state.temperature, state.pressure, composition);
        };
        const double t = state.temperature;
        const auto gibbsAt = [&](double temperature, double pressure) {
            return gibbs(package, {state.phase, temperature, pressure}, composition);
        };
        const double enthalpy = value(PhaseProperty::enthalpyNF);
        EXPECT_NEAR(
            -t * t * centralDifference([&](double x) { return gibbsAt(x, state.pressure) / x; }, t, 1e-3 * t),
            enthalpy, 1e-5 * std::abs(enthalpy) + 0.1);
        EXPECT_NEAR(-centralDifference([&](double x) { return gibbsAt(x, state.pressure); }, t, 1e-3 * t),
                    value(PhaseProperty::entropyNF), 1e-3);
        const double volume = value(PhaseProperty::volume);
        EXPECT_NEAR(
            centralDifference([&](double x) { return gibbsAt(t, x); }, state.pressure, 1e-3 * state.pressure),
            volume, 1e-5 * volume);
        EXPECT_NEAR(value(PhaseProperty::internalEnergy), enthalpy - state.pressure * volume,
                    1e-9 * std::abs(enthalpy));
    }
}

// With the formation terms, the ideal gas at the reference state has the tabulated Gibbs energy.
TEST(Identities, formationTermsGiveTheGibbsEnergyOfFormation) {
    constexpr double thin = 1e-3;
    for (const Compound& compound : allCompounds()) {
        const PropertyPackage package({&compound});
        const auto value = [&](PhaseProperty property) {
            return valueOf(package, property, Phase::vapor, 298.15, thin, {1});
        };
        const double toReference = gasConstant * 298.15 * std::log(101325 / thin);
        EXPECT_NEAR(value(PhaseProperty::enthalpyF) - 298.15 * value(PhaseProperty::entropyF) + toReference,
                    compound.formationGibbsEnergy, 0.01)
            << compound.name;
        EXPECT_NEAR(value(PhaseProperty::enthalpyF), compound.formationEnthalpy, 0.01) << compound.name;
        EXPECT_NEAR(value(PhaseProperty::enthalpyNF), 0, 0.01) << compound.name;
    }
}

TEST(Identities, derivativesOfFugacityCoefficientsAgreeWithDifferences) {
    const PropertyPackage package = mixed();
    const std::size_t n = composition.size();
    for (const State& state : states) {
        SCOPED_TRACE(testing::Message() << state.temperature << " K, " << state.pressure << " Pa");
        const Root root = state.phase == Phase::vapor ? Root::vapor : Root::liquid;
        FugacityDerivatives derivatives;
        PengRobinson(package.compounds(), state.temperature)
            .fugacity(root, state.pressure, composition, &derivatives);
        for (std::size_t i = 0; i < n; ++i) {
            const auto coefficient = [&](double temperature, double pressure,
                                         const std::vector<double>& moles) {
                return valuesOf(package, PhaseProperty::logFugacityCoefficient, state.phase, temperature,
                                pressure, moles)[i];
            };
            constexpr double step = 1e-4;
            const auto expectSlope = [&](double slope, const auto& function) {
                EXPECT_NEAR(slope, centralDifference(function, 0, step), 1e-6 * std::abs(slope) + 1e-6);
            };
            expectSlope(derivatives.logTemperature[i], [&](double x) {
                return coefficient(state.temperature * std::exp(x), state.pressure, composition);
            });
            expectSlope(derivatives.logPressure[i], [&](double x) {
                return coefficient(state.temperature, state.pressure * std::exp(x), composition);
            });
            for (std::size_t j = 0; j < n; ++j) {
                expectSlope(derivatives.moles[i * n + j], [&](double x) {
                    std::vector<double> moles = composition;
                    moles[j] += x;
                    return coefficient(state.temperature, state.pressure, moles);
                });
            }
        }
    }
}

} // namespace solvane::host
