#pragma once

#include "results/RunResults.h"

#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// What to do about a failure of a unit whose message does not say it, given the streams that are known so
/// far. Empty if that is not known.
std::string failureHint(std::string_view message, const std::vector<StreamResult>& streams,
                        const UnitResult& unit);

} // namespace solvane::host
