/// Reactors that are warmed by what should cool them, and the reverse.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// Adds a reactor whose product has the heat of reaction with the wrong sign. The unit keeps the mass.
void addReactionHeatWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
