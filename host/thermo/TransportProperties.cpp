#include "TransportProperties.h"

#include "CubicParameters.h"
#include "IdealGas.h"

#include <algorithm>
#include <array>

namespace solvane::host {

namespace {

/// A coefficient is a + b w + c m^4 + d k with the acentric factor, the reduced dipole moment and the
/// association parameter.
using CoefficientRow = std::array<double, 4>;

constexpr std::array<CoefficientRow, 10> viscosityTable{{
    {6.324, 50.412, -51.680, 1189.0},
    {1.210e-3, -1.154e-3, -6.257e-3, 0.03728},
    {5.283, 254.209, -168.48, 3898.0},
    {6.623, 38.096, -8.464, 31.42},
    {19.745, 7.630, -14.354, 31.53},
    {-1.900, -12.537, 4.985, -18.15},
    {24.275, 3.450, -11.291, 69.35},
    {0.7972, 1.117, 0.01235, -4.117},
    {-0.2382, 0.06770, -0.8163, 4.025},
    {0.06863, 0.3479, 0.5926, -0.727},
}};

constexpr std::array<CoefficientRow, 7> conductivityTable{{
    {2.4166, 0.74824, -0.91858, 121.72},
    {-0.50924, -1.5094, -49.991, 69.983},
    {6.6107, 5.6207, 64.760, 27.039},
    {14.543, -8.9139, -5.6379, 74.344},
    {0.79274, 0.82019, -0.69369, 6.3173},
    {-5.8634, 12.801, 9.5893, 65.529},
    {91.089, 128.11, -54.217, 523.81},
}};

/// The fluid that represents the mixture, and its state in reduced terms.
template <class Scalar>
struct EquivalentFluid {
    Scalar criticalTemperature; ///< K
    Scalar criticalVolume;      ///< cm3/mol
    Scalar molecularWeight;     ///< g/mol
    Scalar acentricFactor;
    Scalar dipole; ///< reduced, to its fourth power
    Scalar association;
    Scalar reducedTemperature; ///< kT over the energy of the intermolecular potential
    Scalar packing;            ///< critical volume over six times the volume

    template <std::size_t count>
    std::array<Scalar, count> coefficients(const std::array<CoefficientRow, count>& table) const {
        std::array<Scalar, count> result;
        std::ranges::transform(table, result.begin(), [this](const CoefficientRow& row) {
            return row[0] + row[1] * acentricFactor + row[2] * dipole + row[3] * association;
        });
        return result;
    }
};

constexpr double temperatureRatio = 1.2593;

/// Hydrogen's acentric factor reflects its quantum effects, not the shape of its molecules.
double shapeFactor(const Compound& compound) {
    return std::max(compound.acentricFactor, 0.0);
}

template <class Scalar>
EquivalentFluid<Scalar> equivalentFluid(std::span<const Compound* const> compounds, Scalar temperature,
                                        Scalar volume, std::span<const Scalar> composition) {
    using std::pow;
    Scalar size3 = 0; // sums over the pairs of compounds
    Scalar energySize3 = 0;
    Scalar energySize2Mass = 0;
    Scalar acentricSize3 = 0;
    Scalar dipoles = 0;
    Scalar association = 0;
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        for (std::size_t j = 0; j < compounds.size(); ++j) {
            const Compound& a = *compounds[i];
            const Compound& b = *compounds[j];
            const Scalar share = composition[i] * composition[j];
            const double cube = 0.809 * 0.809 * 0.809 * 1e6 * std::sqrt(a.criticalVolume * b.criticalVolume);
            const double size = std::cbrt(cube);
            const double energy = std::sqrt(a.criticalTemperature * b.criticalTemperature) / temperatureRatio;
            const double mass =
                2 * a.molecularWeight * b.molecularWeight / (a.molecularWeight + b.molecularWeight);
            const double moments = a.dipoleMoment * b.dipoleMoment;
            size3 += share * cube;
            energySize3 += share * (energy * cube);
            energySize2Mass += share * (energy * size * size * std::sqrt(mass));
            acentricSize3 += share * (0.5 * (shapeFactor(a) + shapeFactor(b)) * cube);
            dipoles += share * (moments * moments / cube);
            association += share * std::sqrt(a.associationParameter * b.associationParameter);
        }
    }
    const Scalar energy = energySize3 / size3;
    const Scalar rootMass = energySize2Mass / (energy * pow(size3, 2.0 / 3));
    EquivalentFluid<Scalar> fluid;
    fluid.criticalTemperature = temperatureRatio * energy;
    fluid.criticalVolume = size3 / (0.809 * 0.809 * 0.809);
    fluid.molecularWeight = rootMass * rootMass;
    fluid.acentricFactor = acentricSize3 / size3;
    const Scalar scale = fluid.criticalVolume * fluid.criticalTemperature;
    fluid.dipole = std::pow(131.3, 4) * size3 * dipoles / (scale * scale);
    fluid.association = association;
    fluid.reducedTemperature = temperature / energy;
    fluid.packing = fluid.criticalVolume * 1e-6 / (6 * translatedVolume(compounds, volume, composition));
    return fluid;
}

/// How the density weakens the behaviour of a dilute gas: "G2" of the paper, 1 for the dilute gas. `c` are
/// the coefficients 1 to 5.
template <class Scalar>
Scalar densityFactor(const auto& c, Scalar y) {
    using std::exp;
    using std::expm1;
    const Scalar g1 = (1 - 0.5 * y) / ((1 - y) * (1 - y) * (1 - y));
    return (-c[0] * expm1(-c[3] * y) / y + c[1] * g1 * exp(c[4] * y) + c[2] * g1) /
           (c[0] * c[3] + c[1] + c[2]);
}

/// Viscosity of the dilute gas, Pa s.
template <class Scalar>
Scalar diluteViscosity(const EquivalentFluid<Scalar>& fluid) {
    using std::exp;
    using std::pow;
    using std::sqrt;
    const Scalar t = fluid.reducedTemperature;
    // P. D. Neufeld, A. R. Janzen, R. A. Aziz, J. Chem. Phys. 57 (1972) 1100.
    const Scalar collisions =
        1.16145 * pow(t, -0.14874) + 0.52487 * exp(-0.77320 * t) + 2.16178 * exp(-2.43787 * t);
    const Scalar shape = 1 - 0.2756 * fluid.acentricFactor + 0.059035 * fluid.dipole + fluid.association;
    return 36.344e-7 * sqrt(fluid.molecularWeight * fluid.criticalTemperature * t) * shape /
           (pow(fluid.criticalVolume, 2.0 / 3) * collisions);
}

} // namespace

template <class Scalar>
Scalar viscosity(std::span<const Compound* const> compounds, Scalar temperature, Scalar volume,
                 std::span<const Scalar> composition) {
    using std::exp;
    using std::pow;
    using std::sqrt;
    const EquivalentFluid<Scalar> fluid = equivalentFluid(compounds, temperature, volume, composition);
    const auto e = fluid.coefficients(viscosityTable);
    const Scalar y = fluid.packing;
    const Scalar t = fluid.reducedTemperature;
    const Scalar g2 = densityFactor(e, y);
    const Scalar dense = e[6] * y * y * g2 * exp(e[7] + e[8] / t + e[9] / (t * t));
    return diluteViscosity(fluid) * (1 / g2 + e[5] * y) +
           36.344e-7 * sqrt(fluid.molecularWeight * fluid.criticalTemperature) /
               pow(fluid.criticalVolume, 2.0 / 3) * dense;
}

template <class Scalar>
Scalar thermalConductivity(std::span<const Compound* const> compounds, Scalar temperature, Scalar volume,
                           std::span<const Scalar> composition) {
    using std::pow;
    using std::sqrt;
    const EquivalentFluid<Scalar> fluid = equivalentFluid(compounds, temperature, volume, composition);
    Scalar heatCapacity = -gasConstant; // of the ideal gas at constant volume
    for (std::size_t i = 0; i < compounds.size(); ++i)
        heatCapacity += composition[i] * idealGasHeatCapacity(*compounds[i], temperature);
    const Scalar w = fluid.acentricFactor;
    const Scalar reduced = temperature / fluid.criticalTemperature;
    const Scalar alpha = heatCapacity / gasConstant - 1.5;
    const Scalar beta = 0.7862 - 0.7109 * w + 1.3168 * w * w;
    const Scalar collisions = 2.0 + 10.5 * reduced * reduced;
    const Scalar psi = 1 + alpha * (0.215 + 0.28288 * alpha - 1.061 * beta + 0.26665 * collisions) /
                               (0.6366 + beta * collisions + 1.061 * alpha * beta);
    const auto b = fluid.coefficients(conductivityTable);
    const Scalar y = fluid.packing;
    const Scalar g2 = densityFactor(b, y);
    const Scalar mass = 1e-3 * fluid.molecularWeight;
    const Scalar q = 3.586e-3 * sqrt(fluid.criticalTemperature / mass) / pow(fluid.criticalVolume, 2.0 / 3);
    return 31.2 * diluteViscosity(fluid) * psi / mass * (1 / g2 + b[5] * y) +
           q * b[6] * y * y * sqrt(reduced) * g2;
}

template double viscosity(std::span<const Compound* const>, double, double, std::span<const double>);
template Dual viscosity(std::span<const Compound* const>, Dual, Dual, std::span<const Dual>);
template double thermalConductivity(std::span<const Compound* const>, double, double,
                                    std::span<const double>);
template Dual thermalConductivity(std::span<const Compound* const>, Dual, Dual, std::span<const Dual>);

} // namespace solvane::host
