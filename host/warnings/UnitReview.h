#pragma once

#include "results/RunResults.h"

#include <span>

namespace solvane::host {

/// A calculated unit with what goes in and out.
struct UnitReview {
    const UnitResult& unit;
    const Balance& balance;
    std::span<const Compound* const> compounds; ///< in the order of the streams' fractions
    std::span<const StreamResult* const> feeds;
    std::span<const StreamResult* const> products;
};

} // namespace solvane::host
