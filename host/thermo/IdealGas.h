/// Ideal-gas heat, of which every enthalpy and entropy of the package is the sum with the equation of state's
/// residual.
#pragma once

#include "Compound.h"

namespace solvane::host {

inline constexpr double gasConstant = 8.314462618; ///< J/mol/K, CODATA 2018

/// The ideal gas at this temperature and pressure is the zero of enthalpy and entropy, compound by compound,
/// and the state that the formation properties are tabulated for.
inline constexpr double referenceTemperature = 298.15; ///< K
inline constexpr double referencePressure = 101325.0;  ///< Pa

/// Heat capacity at constant pressure, J/mol/K. The polynomials are fits from room temperature to about
/// 1500 K: some turn negative below 80 K or above 2000 K. So the value at 150 K holds below it, and that at
/// 1500 K above it, which keeps enthalpy and entropy rising with temperature everywhere.
double idealGasHeatCapacity(const Compound& compound, double temperature);

/// Enthalpy above the reference state, J/mol.
double idealGasEnthalpy(const Compound& compound, double temperature);

/// Entropy above the reference state at the reference pressure, J/mol/K.
double idealGasEntropy(const Compound& compound, double temperature);

} // namespace solvane::host
