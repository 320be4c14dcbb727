/// What a user should check although the run succeeded.
#pragma once

#include "UnitReview.h"

namespace solvane::host {

/// Adds what the engine warns of in a unit's script, which may have failed.
void addScriptWarnings(const UnitResult& unit, std::vector<Warning>& warnings);

/// Adds the implausible results in a unit's products, output parameters and balance.
void addWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
