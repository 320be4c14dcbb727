#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace solvane::soak {

/// The number of units' working folders in a folder, whose name ends in a backslash.
std::size_t workingFoldersIn(const std::wstring& folder);

/// Waits at most ten seconds, the time that processes get to end, for a condition. True if it came true.
bool comesTrue(const std::function<bool()>& condition);

} // namespace solvane::soak
