/// The Peng-Robinson parameters of each compound.
#pragma once

#include "Compound.h"
#include "Dual.h"
#include "IdealGas.h"

#include <numbers>
#include <span>

namespace solvane::host {

// The values of a and b at the critical point follow from the equation's form; the paper rounds them to
// 0.45724 and 0.07780.
inline constexpr double omegaA = 0.45723552892138219;
inline constexpr double omegaB = 0.077796073903888455;

// V^2 + 2 b V - b^2 = (V + delta1 b) (V + delta2 b).
inline constexpr double delta1 = 1 + std::numbers::sqrt2;
inline constexpr double delta2 = 1 - std::numbers::sqrt2;

/// sqrt(a), with a in Pa m6/mol2, which falls with the root of the temperature in a straight line.
struct AttractionRoot {
    double atZero;
    double fall; ///< per sqrt(K)

    // Beyond some ten times the critical temperature the value turns negative. It keeps its sign, so that a
    // mixture's a stays a smooth function of temperature there, where it is almost zero.
    template <class Scalar>
    Scalar value(Scalar rootOfTemperature) const {
        return atZero - fall * rootOfTemperature;
    }
    /// The derivative of the value to temperature.
    template <class Scalar>
    Scalar slope(Scalar rootOfTemperature) const {
        return -0.5 * fall / rootOfTemperature;
    }
};

inline AttractionRoot attractionRoot(const Compound& compound) {
    const double w = compound.acentricFactor;
    const double m = 0.37464 + (1.54226 - 0.26992 * w) * w;
    const double criticalRoot =
        gasConstant * compound.criticalTemperature * std::sqrt(omegaA / compound.criticalPressure);
    return {criticalRoot * (1 + m), criticalRoot * m / std::sqrt(compound.criticalTemperature)};
}

/// b, m3/mol.
inline double covolume(const Compound& compound) {
    return omegaB * gasConstant * compound.criticalTemperature / compound.criticalPressure;
}

/// ln((V + delta1 b)/(V + delta2 b)) without loss of digits in a thin gas.
template <class Scalar>
Scalar attractionLogarithm(Scalar volume, Scalar b) {
    using std::log1p;
    return log1p((delta1 - delta2) * b / (volume + delta2 * b));
}

/// The volume, m3/mol, without the equation's error: its volumes of liquids are some 10 % off, by an amount
/// that hardly depends on temperature. Correlations of real volumes take these: A. Peneloux, E. Rauzy, R.
/// Freze, Fluid Phase Equilibria 8 (1982) 7, with the constants for this equation of K. S. Pedersen, P. L.
/// Christensen, Phase Behavior of Petroleum Reservoir Fluids (2007), chapter 4.
template <class Scalar>
Scalar translatedVolume(std::span<const Compound* const> compounds, Scalar volume,
                        std::span<const Scalar> composition) {
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        const Compound& compound = *compounds[i];
        volume += composition[i] * (0.50033 * gasConstant * compound.criticalTemperature /
                                    compound.criticalPressure * (compound.rackettParameter - 0.25969));
    }
    return volume;
}

} // namespace solvane::host
