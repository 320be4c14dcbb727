/// What a wrong balance of masses has for its cause.
#pragma once

#include "results/RunResults.h"

#include <span>
#include <string>

namespace solvane::host {

inline constexpr char balanceRemedy[] = "compare the script's balance with its equations";

/// What to do about masses that are not kept: names a product's flow that is off by the factor of another
/// unit of flows, or an element.
std::string massRemedy(const Balance& balance, std::span<const StreamResult* const> products);

} // namespace solvane::host
