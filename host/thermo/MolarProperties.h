/// Enthalpy, entropy and related properties of a homogeneous phase.
#pragma once

#include "HomogeneousPhase.h"

namespace solvane::host {

/// See PhaseProperty for what the names mean, and for the units that are not J/mol, J/mol/K or m3/mol.
template <class Scalar>
struct MolarPropertiesOf {
    Scalar enthalpyF = 0;
    Scalar enthalpyNF = 0;
    Scalar entropyF = 0;
    Scalar entropyNF = 0;
    Scalar internalEnergy = 0;
    Scalar gibbsEnergy = 0;
    Scalar helmholtzEnergy = 0;
    Scalar volume = 0;
    Scalar heatCapacityCp = 0;
    Scalar heatCapacityCv = 0;
    Scalar density = 0;
    Scalar compressibilityFactor = 0;
    Scalar compressibility = 0;
    Scalar speedOfSound = 0;
    Scalar jouleThomsonCoefficient = 0;
    Scalar molecularWeight = 0;
};

using MolarProperties = MolarPropertiesOf<double>;

/// Zeros are allowed in the composition. For double and for Dual.
template <class Scalar>
MolarPropertiesOf<Scalar> molarProperties(std::span<const Compound* const> compounds, Phase phase,
                                          Scalar temperature, Scalar pressure,
                                          std::span<const Scalar> composition);

/// The excess over an ideal mixture of the pure compounds in the same phase. Enthalpy, entropy,
/// energies (without formation) and volume; the other members have no meaning.
template <class Scalar>
MolarPropertiesOf<Scalar> excessProperties(std::span<const Compound* const> compounds, Phase phase,
                                           Scalar temperature, Scalar pressure,
                                           std::span<const Scalar> composition);

} // namespace solvane::host
