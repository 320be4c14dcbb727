#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace solvane::soak {

/// How many working folders of units are in that folder, which ends in a backslash.
std::size_t workingFoldersIn(const std::wstring& folder);

/// Waits for what is to come true within ten seconds, the time that ended processes have. Whether it did.
bool comesTrue(const std::function<bool()>& condition);

} // namespace solvane::soak
