/// Enthalpy, entropy and their kin of a homogeneous phase.
#pragma once

#include "PengRobinson.h"
#include "PropertyPackage.h"

namespace solvane::host {

/// See PhaseProperty for what "F" and "NF" mean. J/mol, J/mol/K, m3/mol.
struct MolarProperties {
    double enthalpyF = 0;
    double enthalpyNF = 0;
    double entropyF = 0;
    double entropyNF = 0;
    double internalEnergy = 0;
    double volume = 0;
};

/// The composition's fractions sum to 1; zeros are welcome.
MolarProperties molarProperties(std::span<const Compound* const> compounds, Phase phase, double temperature,
                                double pressure, std::span<const double> composition);

inline Root rootOf(Phase phase) {
    return phase == Phase::vapor ? Root::vapor : Root::liquid;
}

} // namespace solvane::host
