/// Viscosity and thermal conductivity of gases and liquids.
#pragma once

#include "Compound.h"
#include "Dual.h"

#include <span>

namespace solvane::host {

// By the corresponding states of T.-H. Chung, M. Ajlan, L. L. Lee, K. E. Starling, Ind. Eng. Chem. Res. 27
// (1988) 671, from the dilute gas to the liquid, mixtures by its mixing rules. Gases are mostly within
// 5 % of measurements (hydrogen and toluene 10 to 15 %), liquids within some 30 %. Water is an exception: its
// vapour conducts a third too well and its liquid three times too well. For double and for Dual.

/// Pa s. `volume` is the phase's own, m3/mol.
template <class Scalar>
Scalar viscosity(std::span<const Compound* const> compounds, Scalar temperature, Scalar volume,
                 std::span<const Scalar> composition);

/// W/m/K.
template <class Scalar>
Scalar thermalConductivity(std::span<const Compound* const> compounds, Scalar temperature, Scalar volume,
                           std::span<const Scalar> composition);

} // namespace solvane::host
