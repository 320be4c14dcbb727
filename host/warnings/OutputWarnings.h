/// Outputs that are not in SI units, or of another quantity.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// Adds the outputs that are a flow, temperature or pressure of the streams, or a change of enthalpy per mass
/// or mole, in another unit, those of another stream than their name says, and temperatures that no process
/// has.
void addOutputWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
