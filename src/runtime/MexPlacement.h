/// Puts the build of CapeOpenUnitMex that fits the installed Matlab where Matlab finds it.
#pragma once

#include <optional>
#include <string>

namespace solvane {

/// The folder for Matlab's path, without a trailing backslash, once placeMexFile has succeeded. One for each
/// version of Matlab, shared by all units and processes; it stays when they end.
const std::string& mexFolder();

/// Done once per process; a failure is tried again by the next unit. The results of the copies are not
/// looked at: a missing file shows when the script calls the gateway.
[[nodiscard]] bool placeMexFile(std::string& error);

/// The CurVer of Matlab.Application: a programmatic name that carries the installed Matlab's version. Nothing
/// where none is installed.
std::optional<std::wstring> installedMatlab();

/// Whether a CurVer of Matlab.Application means Matlab 5, 6 or 7.0, which load a MEX file as a DLL.
bool isOldMatlab(const std::wstring& currentVersion);

} // namespace solvane
