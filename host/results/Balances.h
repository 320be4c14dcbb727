/// What goes into a unit and what comes out.
#pragma once

#include "RunResults.h"

#include <span>

namespace solvane::host {

/// The balance of a unit of that name, whose streams are in the order of the compounds.
Balance balanceOf(const std::string& unit, std::span<const Compound* const> compounds,
                  std::span<const StreamResult* const> feeds, std::span<const StreamResult* const> products);

/// Whether as much goes out as comes in, up to the rounding of molecular weights and what a script leaves.
bool isKept(const Flows& flows);

} // namespace solvane::host
