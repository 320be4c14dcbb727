/// Reactors in which nothing reacts.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// Adds the outputs named conversion, yield or extent that are 0 although the feeds flow.
void addReactionWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
