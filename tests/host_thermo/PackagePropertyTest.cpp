#include "IdealGas.h"
#include "PengRobinson.h"
#include "Thermodynamics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace solvane::host {

namespace {

struct State {
    Phase phase;
    double temperature;
    double pressure;
};

// Gases, a liquid, a dense fluid; next a vapour and a liquid of the same temperature and
// pressure.
constexpr State states[] = {
    {Phase::vapor, 300, 1e5},   {Phase::vapor, 320, 20e5},  {Phase::liquid, 250, 90e5},
    {Phase::vapor, 450, 400e5}, {Phase::liquid, 320, 20e5},
};
const std::vector<double> vapor{0.45, 0.25, 0.15, 0.10, 0.05};
const std::vector<double> liquid{0.10, 0.10, 0.15, 0.30, 0.35};
const std::size_t n = vapor.size();

PropertyPackage mixed() {
    return packageOf({"methane", "carbon dioxide", "propane", "n-pentane", "hydrogen"});
}

using Function = std::function<std::vector<double>(double, double, const std::vector<double>&, Derivative)>;

/// All derivatives of `function(temperature, pressure, moles)` against central differences. `moles` are those
/// of one phase or of two; `molar` says whether the value is per mole. Tolerances: 1e-5 of the slope, and
/// what the step of 1e-4 leaves of the value's own digits.
void expectDerivatives(const Function& function, const State& state, const std::vector<double>& moles,
                       bool molar) {
    const std::vector<double> values = function(state.temperature, state.pressure, moles, Derivative::none);
    const auto expect = [&](std::span<const double> slopes, double scale, const auto& at, const char* to) {
        constexpr double h = 5e-4;
        const std::vector<double> up = at(h), down = at(-h), farUp = at(2 * h), farDown = at(-2 * h);
        ASSERT_EQ(slopes.size(), values.size()) << to;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double slope = (8 * (up[i] - down[i]) - (farUp[i] - farDown[i])) / (12 * h);
            EXPECT_NEAR(slopes[i] * scale, slope, 1e-6 * std::abs(slope) + 1e-8 * std::abs(values[i]) + 1e-18)
                << to << ", value " << i;
        }
    };
    const auto whole = [&](Derivative derivative) {
        return function(state.temperature, state.pressure, moles, derivative);
    };
    expect(
        whole(Derivative::temperature), state.temperature,
        [&](double h) {
            return function(state.temperature * (1 + h), state.pressure, moles, Derivative::none);
        },
        "temperature");
    expect(
        whole(Derivative::pressure), state.pressure,
        [&](double h) {
            return function(state.temperature, state.pressure * (1 + h), moles, Derivative::none);
        },
        "pressure");

    const std::vector<double> toMoles = whole(Derivative::moles);
    const std::vector<double> toFractions = whole(Derivative::molFraction);
    const std::size_t rows = values.size();
    ASSERT_EQ(toMoles.size(), rows * moles.size());
    ASSERT_EQ(toFractions.size(), rows * moles.size());
    for (std::size_t j = 0; j < moles.size(); ++j) {
        const auto changed = [&](std::size_t other, double toOther, double h) {
            std::vector<double> amounts = moles;
            amounts[j] += h;
            amounts[other] += toOther * h;
            std::vector<double> result =
                function(state.temperature, state.pressure, amounts, Derivative::none);
            for (double& value : result)
                value *= molar && toOther == 0 ? 1 + h : 1;
            return result;
        };
        expect(
            std::span(toMoles).subspan(j * rows, rows), 1, [&](double h) { return changed(j, 0, h); },
            "moles");
        // Fractions cannot change alone; at the cost of another one of the same phase they can.
        const std::size_t other = j % n ? j - 1 : j + 1;
        std::vector<double> exchange(rows);
        for (std::size_t i = 0; i < rows; ++i)
            exchange[i] = toFractions[j * rows + i] - toFractions[other * rows + i];
        expect(exchange, 1, [&](double h) { return changed(other, -1, h); }, "fraction");
    }
}

} // namespace

TEST(PhaseProperties, derivativesAgreeWithDifferences) {
    const PropertyPackage package = mixed();
    for (const PhasePropertyRow& row : phaseProperties()) {
        for (const State& state : states) {
            SCOPED_TRACE(testing::Message()
                         << row.name << " at " << state.temperature << " K, " << state.pressure << " Pa");
            const Function function = [&](double t, double p, const std::vector<double>& x, Derivative d) {
                std::vector<double> values;
                std::string error;
                EXPECT_TRUE(package.phaseProperty(row.property, state.phase, t, p, x, values, error, d));
                return values;
            };
            const auto& moles = state.phase == Phase::vapor ? vapor : liquid;
            ASSERT_EQ(function(state.temperature, state.pressure, moles, Derivative::none).size(),
                      row.perCompound ? n : 1);
            expectDerivatives(function, state, moles, row.molar);
        }
    }
}

TEST(PhaseProperties, derivativesOfTwoPhasesAgreeWithDifferences) {
    const PropertyPackage package = mixed();
    std::vector<double> moles = vapor;
    moles.insert(moles.end(), liquid.begin(), liquid.end());
    for (const TwoPhaseProperty property :
         {TwoPhaseProperty::kvalue, TwoPhaseProperty::logKvalue, TwoPhaseProperty::surfaceTension}) {
        SCOPED_TRACE(static_cast<int>(property));
        const Function function = [&](double t, double p, const std::vector<double>& x, Derivative d) {
            std::vector<double> values;
            std::string error;
            const TwoPhases phases{{Phase::vapor, Phase::liquid},
                                   {std::span(x).first(n), std::span(x).last(n)}};
            EXPECT_TRUE(package.twoPhaseProperty(property, phases, t, p, values, error, d)) << error;
            return values;
        };
        expectDerivatives(function, states[1], moles, false);
    }
}

TEST(PhaseProperties, obeyTheRelationsBetweenThem) {
    const PropertyPackage package = mixed();
    for (const State& state : states) {
        SCOPED_TRACE(testing::Message() << state.temperature << " K, " << state.pressure << " Pa");
        const auto& x = state.phase == Phase::vapor ? vapor : liquid;
        const auto of = [&](const State& where, PhaseProperty property, Derivative derivative) {
            std::vector<double> values;
            std::string error;
            EXPECT_TRUE(package.phaseProperty(property, where.phase, where.temperature, where.pressure, x,
                                              values, error, derivative));
            return values;
        };
        const auto all = [&](PhaseProperty property, Derivative derivative = Derivative::none) {
            return of(state, property, derivative);
        };
        const auto value = [&](PhaseProperty p, Derivative d = Derivative::none) { return all(p, d).at(0); };
        const auto expectEqual = [](double one, double other) {
            EXPECT_NEAR(one, other, 1e-9 * std::abs(other));
        };
        using enum PhaseProperty;
        using enum Derivative;
        const double t = state.temperature;
        const double v = value(volume), vT = value(volume, Derivative::temperature),
                     vP = value(volume, Derivative::pressure);
        const double cp = value(heatCapacityCp);
        expectEqual(value(volume), value(gibbsEnergy, Derivative::pressure));
        expectEqual(value(entropy), -value(gibbsEnergy, Derivative::temperature));
        expectEqual(value(enthalpy), value(gibbsEnergy) + t * value(entropy));
        expectEqual(cp, value(enthalpy, Derivative::temperature));
        expectEqual(value(heatCapacityCv), cp + t * vT * vT / vP);
        expectEqual(value(compressibility), -vP / v);
        expectEqual(value(jouleThomsonCoefficient), -value(enthalpy, Derivative::pressure) / cp);
        const double entropyT = value(entropy, Derivative::temperature);
        const double alongIsentrope = vP - vT * value(entropy, Derivative::pressure) / entropyT;
        expectEqual(value(speedOfSound), v / std::sqrt(-alongIsentrope * 1e-3 * value(molecularWeight)));
        expectEqual(value(density) * gasConstant * t * value(compressibilityFactor), state.pressure);
        expectEqual(value(helmholtzEnergy), value(gibbsEnergy) - state.pressure * v);
        const Root root = state.phase == Phase::vapor ? Root::vapor : Root::liquid;
        const PengRobinson equation(package.compounds(), t); // of the flashes
        const Fugacity coefficients = equation.fugacity(root, state.pressure, x);
        const FugacityDerivatives analytic = equation.derivatives(coefficients, state.pressure);
        const State thin{Phase::vapor, t, 1e-2};
        double excess = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const double rise = all(gibbsEnergy, moles)[i] - of(thin, gibbsEnergy, moles)[i];
            EXPECT_NEAR(rise / (gasConstant * t), std::log(all(fugacity)[i] / (x[i] * thin.pressure)), 1e-7);
            expectEqual(all(logFugacityCoefficient)[i], equation.of(coefficients.logCoefficient, i));
            expectEqual(t * all(logFugacityCoefficient, Derivative::temperature)[i],
                        equation.byLogTemperature(analytic, i));
            expectEqual(state.pressure * all(logFugacityCoefficient, Derivative::pressure)[i],
                        equation.of(analytic.logPressure, i));
            for (std::size_t j = 0; j < n; ++j)
                EXPECT_NEAR(all(logFugacityCoefficient, moles)[j * n + i],
                            equation.of(equation.byMoles(analytic, i), j), 1e-9);
            excess += gasConstant * t * x[i] * std::log(all(activityCoefficient)[i]);
            expectEqual(all(activity)[i], x[i] * all(activityCoefficient)[i]);
            expectEqual(std::exp(all(logFugacity)[i]), all(fugacity)[i]);
        }
        EXPECT_NEAR(value(excessGibbsEnergy), excess, 1e-7);
        EXPECT_NEAR(value(excessHelmholtzEnergy), value(excessInternalEnergy) - t * value(excessEntropy),
                    1e-7);
    }
}

// With the formation terms, the ideal gas at the reference state has the tabulated Gibbs energy.
TEST(PhaseProperties, formationTermsGiveTheGibbsEnergyOfFormation) {
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

TEST(PhaseProperties, ofWhatIsAbsentAreInfiniteOnlyWhereTheyMustBe) {
    using enum PhaseProperty;
    const PropertyPackage package = packageOf({"methane", "propane"});
    const auto derivative = [&](PhaseProperty property, const std::vector<double>& x) {
        std::vector<double> values;
        std::string error;
        EXPECT_TRUE(
            package.phaseProperty(property, Phase::vapor, 300, 1e6, x, values, error, Derivative::moles));
        return values;
    };
    constexpr std::array steep{entropy, entropyF, entropyNF, gibbsEnergy, helmholtzEnergy, logFugacity};
    for (const PhasePropertyRow& row : phaseProperties()) {
        SCOPED_TRACE(row.name);
        const std::vector<double> absent = derivative(row.property, {1, 0});
        const std::vector<double> trace = derivative(row.property, {1 - 1e-9, 1e-9});
        const bool isSteep = std::ranges::find(steep, row.property) != steep.end();
        EXPECT_EQ(std::isinf(absent.back()), isSteep) << absent.back();
        if (row.property == logFugacity)
            continue; // of what is absent it is infinite itself
        const double scale = std::ranges::max(trace, {}, [](double x) { return std::abs(x); });
        for (std::size_t i = 0; i + isSteep < absent.size(); ++i)
            EXPECT_NEAR(absent[i], trace[i], 1e-7 * std::abs(scale) + 1e-5) << i;
    }
}

// Measured, of the NIST Chemistry WebBook; thin gases and liquids at saturation are among the pure
// properties.
TEST(PhaseProperties, ofADenseGasAreNearThoseOfNature) {
    const PropertyPackage package = packageOf({"methane"});
    for (const auto& [property, measured] :
         {std::pair(PhaseProperty::viscosity, 13.8e-6),
          std::pair(PhaseProperty::thermalConductivity, 42.5e-3),
          std::pair(PhaseProperty::heatCapacityCp, 48.0), std::pair(PhaseProperty::speedOfSound, 450.0)})
        EXPECT_NEAR(valueOf(package, property, Phase::vapor, 300, 100e5, {1}), measured, 0.04 * measured);
}

} // namespace solvane::host
