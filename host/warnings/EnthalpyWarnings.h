/// Why the enthalpies of a unit do not close.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// Adds what the numbers prove: heats of formation that the script leaves out, kJ or kW in place of J or W,
/// or outputs that show other heats and powers. The unit keeps the mass and the elements.
void addEnthalpyWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
