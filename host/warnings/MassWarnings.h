/// Masses and elements that a unit does not keep.
#pragma once

#include "UnitReview.h"

#include <span>
#include <string>
#include <vector>

namespace solvane::host {

/// What to do about masses that are not kept: names a product's flow that is off by the factor of another
/// unit of flows, or an element.
std::string massRemedy(const Balance& balance, std::span<const StreamResult* const> products);

/// False if it added some.
bool addMassWarnings(const UnitReview& review, std::vector<Warning>& warnings);

} // namespace solvane::host
