/// Compressors, pumps and expanders whose work is not what their efficiency makes of the ideal one.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// Adds a work with the wrong sign, and an ideal state at an entropy that is the feed's enthalpy.
void addMachineWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
