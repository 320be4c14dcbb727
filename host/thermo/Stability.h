/// The stability test by tangent plane distance (M. L. Michelsen, Fluid Phase Equilibria 9 (1982) 1).
#pragma once

#include "PengRobinson.h"

namespace solvane::host {

/// The deepest point that a trial phase found below the tangent plane.
struct TrialPhase {
    bool belowPlane = false;         ///< the mixture gains by forming this phase
    std::vector<double> composition; ///< mole fractions
};

/// Tests whether the mixture gains by forming a phase on the given root. `logFugacity` is ln(z phi) of the
/// mixture in the tested state; all mole fractions are positive.
TrialPhase tryPhase(const PengRobinson& equation, std::span<const Compound* const> compounds, Root root,
                    double pressure, std::span<const double> composition,
                    std::span<const double> logFugacity);

} // namespace solvane::host
