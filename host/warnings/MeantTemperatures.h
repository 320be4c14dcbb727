/// Products whose temperature is not the one with which the unit's enthalpies balance.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// One warning for each product that is set in degC, or converted to K twice, or not set at the temperature
/// of an output: the numbers prove it if the enthalpies balance there, and not where it is. The unit keeps
/// the mass.
std::vector<Warning> meantTemperatures(const UnitReview& review);

} // namespace solvane::host
