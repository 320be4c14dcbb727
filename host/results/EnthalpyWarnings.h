/// Why the enthalpies of a unit do not close.
#pragma once

#include "RunResults.h"

#include <vector>

namespace solvane::host {

/// Adds what the numbers prove: heats of formation that the script leaves out, and kJ or kW in place of J or
/// W. `balance` keeps the mass and the elements.
void addEnthalpyWarnings(const UnitResult& unit, const Balance& balance, std::vector<Warning>& warnings);

} // namespace solvane::host
