/// Ideal-gas heat. Every enthalpy and entropy of the package is its sum with the equation of state's
/// residual.
#pragma once

#include "Compound.h"
#include "Dual.h"

namespace solvane::host {

inline constexpr double gasConstant = 8.314462618; ///< J/mol/K, CODATA 2018

/// The ideal gas at this temperature and pressure is the zero of enthalpy and entropy, compound by compound,
/// and the state that the formation properties are tabulated for.
inline constexpr double referenceTemperature = 298.15; ///< K
inline constexpr double referencePressure = 101325.0;  ///< Pa

/// Where the heat capacities are fitted, K.
inline constexpr double lowestFitted = 150.0;
inline constexpr double highestFitted = 1500.0;

/// Heat capacity at constant pressure, J/mol/K. The polynomials are fits from room temperature to about
/// 1500 K: some turn negative below 80 K or above 2000 K. So the value at 150 K is used below it, and that at
/// 1500 K above it, which keeps enthalpy and entropy rising with temperature everywhere. Like all that
/// follows, for double and for Dual.
template <class Scalar>
Scalar idealGasHeatCapacity(const Compound& compound, Scalar temperature);

/// Enthalpy above the reference state, J/mol.
template <class Scalar>
Scalar idealGasEnthalpy(const Compound& compound, Scalar temperature);

/// Entropy above the reference state at the reference pressure, J/mol/K.
template <class Scalar>
Scalar idealGasEntropy(const Compound& compound, Scalar temperature);

} // namespace solvane::host
