/// Pressures that rise for no reason.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// Adds the gases whose pressure lies above that of all feeds, although the unit takes up neither heat nor
/// power. Liquids may have a static head.
void addPressureWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
