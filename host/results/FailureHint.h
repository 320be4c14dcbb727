#pragma once

#include <string>
#include <string_view>

namespace solvane::host {

/// What to do about a failure whose message does not say it. Empty if that is not known.
std::string_view failureHint(std::string_view message);

} // namespace solvane::host
