/// What no unit can do without giving off heat.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// Adds a fall in entropy of a unit that neither reacts nor separates, and whose enthalpies change by its
/// power only, or not at all.
void addEntropyWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
