#pragma once

#include "FailedUnit.h"

#include <string>
#include <string_view>

namespace solvane::host {

/// Why the script probably asks for a flash at values that no mixture has. Empty if that is not known, or if
/// the message is of another failure.
std::string flashHint(std::string_view message, const FailedUnit& failed);

} // namespace solvane::host
