/// The states of a mixture at a given vapour fraction.
#pragma once

#include "PhaseSplit.h"

#include <string>

namespace solvane::host {

/// Finds the state of the given vapour fraction (0 to 1) at the given temperature or pressure, and of several
/// the first on the line from low pressure. It has both phases, the vapour first. False with a text if none
/// is found within the bounds of temperature and pressure.
bool saturatedEquilibrium(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                          Equilibrium& result, std::string& error);

} // namespace solvane::host
