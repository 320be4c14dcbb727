/// Where a mixture has a given vapour fraction.
#pragma once

#include "PhaseSplit.h"

#include <string>

namespace solvane::host {

/// Finds the state of the given vapour fraction (0 to 1) at the given temperature or pressure, and of several
/// the first that one meets on the line coming from low pressure. It has both phases, the vapour first. False
/// with a text where none is found, or none within the bounds of temperature and pressure.
bool saturatedEquilibrium(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                          Equilibrium& result, std::string& error);

} // namespace solvane::host
