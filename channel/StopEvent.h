/// How a host stops the script that its unit runs.
#pragma once

#include <string>

namespace solvane {

/// The error that ends the script.
inline constexpr char runStopped[] = "the run was stopped";

/// The manual-reset event of a host's process. While it is set, what scripts ask of that process's units
/// fails, with the line of the script, and the engine ends the scripts that go on. The units' calculations
/// fail as after any error. Only hosts that know the engine have one; Matlab does not look at it.
inline std::wstring stopEventName(unsigned long hostProcess) {
    return L"SolvaneStop-" + std::to_wstring(hostProcess);
}

} // namespace solvane
