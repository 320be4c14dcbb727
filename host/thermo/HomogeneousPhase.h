/// One phase by the Peng-Robinson equation of state at a temperature, a pressure and a composition.
#pragma once

#include "Compound.h"
#include "Dual.h"
#include "PhaseProperty.h"

#include <span>
#include <vector>

namespace solvane::host {

/// Everything follows from the mixing rules with the fractions as they are given, whatever they sum to, so
/// that derivatives to a single fraction, the others constant, can be taken. With Dual arguments every value
/// carries its derivative to what they depend on.
template <class Scalar>
struct HomogeneousPhase {
    HomogeneousPhase(std::span<const Compound* const> compounds, Phase phase, Scalar temperature,
                     Scalar pressure, std::span<const Scalar> composition);

    Scalar volume;                ///< m3/mol
    Scalar pressureByVolume;      ///< at constant temperature, Pa mol/m3
    Scalar pressureByTemperature; ///< at constant volume, Pa/K

    // Against the ideal gas at the same temperature and pressure.
    Scalar residualEnthalpy;     ///< J/mol
    Scalar residualEntropy;      ///< J/mol/K
    Scalar residualHeatCapacity; ///< at constant volume, J/mol/K

    Scalar compressibilityFactor() const;
    /// ln phi of each compound.
    std::vector<Scalar> logFugacityCoefficients() const;

private:
    std::span<const Compound* const> compounds_;
    Scalar temperature_;
    Scalar pressure_;
    Scalar mixtureRootA_ = 0;
    Scalar b_ = 0;
};

} // namespace solvane::host
