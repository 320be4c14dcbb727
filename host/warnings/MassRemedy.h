/// What to do about masses that a unit does not keep.
#pragma once

#include "UnitReview.h"

#include <optional>
#include <string>

namespace solvane::host {

/// Names what the flows of the compounds prove, such as a feed without effect, the unit of a flow, or
/// compounds in another order; otherwise where the difference is largest.
std::string massRemedy(const UnitReview& review);

/// The elements that are not kept, such as "C, H". Empty if none is kept.
std::string openElements(const Balance& balance);

/// The flow of the product, mol/s, with which each compound is kept. None if there is none.
std::optional<double> closingFlow(const UnitReview& review, const StreamResult& product);

} // namespace solvane::host
