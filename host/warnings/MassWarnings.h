/// Masses and elements that a unit does not keep.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// False if it added some.
bool addMassWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
