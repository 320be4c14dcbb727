/// The balances of a unit.
#pragma once

#include "RunResults.h"

#include <span>

namespace solvane::host {

/// The balance of a unit of that name. The streams' fractions are in the order of the compounds.
Balance balanceOf(const std::string& unit, std::span<const Compound* const> compounds,
                  std::span<const StreamResult* const> feeds, std::span<const StreamResult* const> products);

/// Whether the flows agree up to the rounding of molecular weights and of scripts.
bool isKept(const Flows& flows);

} // namespace solvane::host
