#pragma once

#include <chrono>

namespace solvane::engine {

/// Some file systems keep times in steps of two seconds: a file that was written less than that before it was
/// read may have been written again since, at the same time.
inline constexpr std::chrono::seconds fileTimeStep(2);

} // namespace solvane::engine
