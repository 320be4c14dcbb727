/// What a user should look at, though the run did not fail.
#pragma once

#include "RunResults.h"

#include <span>

namespace solvane::host {

/// Adds what can hardly be meant in the products and output parameters of a unit and in its balance.
void addWarnings(const UnitResult& unit, const Balance& balance,
                 std::span<const StreamResult* const> products, std::vector<Warning>& warnings);

} // namespace solvane::host
