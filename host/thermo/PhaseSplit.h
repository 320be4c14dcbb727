/// Which phases a mixture forms at a given temperature and pressure.
#pragma once

#include "PengRobinson.h"
#include "PropertyPackage.h"

namespace solvane::host {

/// A mixture without absent compounds: all mole fractions are positive and sum to 1.
struct Mixture {
    std::vector<const Compound*> compounds;
    std::vector<double> composition;
};

/// The stable state: a vapour, a liquid, or both, vapour first. There is no second liquid: of two liquids
/// that the equation would rather form (both denser than 1/(1.75 b), a common bound of vapour-like density),
/// the mixture stays one. A single phase is a vapour if its volume is greater than the equation's critical
/// volume of the mixture, about 3.95 b, otherwise a liquid; so a dense supercritical fluid counts as liquid,
/// a thin one as vapour.
std::vector<PhaseState> splitPhases(const Mixture& mixture, double temperature, double pressure);

/// The least volume over b of a vapour beside a liquid.
inline constexpr double leastVaporVolumeRatio = 1.75;

} // namespace solvane::host
