#pragma once

#include "FailedUnit.h"

#include <string>
#include <string_view>

namespace solvane::host {

/// What to do about a failure of a unit whose message does not say it. Empty if that is not known.
std::string failureHint(std::string_view message, const FailedUnit& failed);

} // namespace solvane::host
