/// Products whose composition, flow, pressure or temperature is implausible.
#pragma once

#include "UnitReview.h"

#include <optional>
#include <string>

namespace solvane::host {

/// What is wrong with a product, and what to do.
struct ProductFault {
    std::string text;
    std::string remedy;
    std::optional<double> state{}; ///< the temperature or pressure at fault
};

/// The first fault of the product; others may be its consequences.
std::optional<ProductFault> productFault(const StreamResult& product, const UnitReview& review);

/// Whether the mole fractions sum to 1.
bool sumsToOne(const StreamResult& stream);

} // namespace solvane::host
