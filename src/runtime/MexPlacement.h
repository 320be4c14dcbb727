/// Places the build of CapeOpenUnitMex that fits the installed Matlab where Matlab finds it.
#pragma once

#include <optional>
#include <string>

namespace solvane {

/// The folder for Matlab's path, without a trailing backslash; valid once placeMexFile has succeeded. Each
/// version of Matlab has one, shared by all units and processes; it stays when they end.
const std::string& mexFolder();

/// Runs once per process; after a failure the next unit tries again. Ignores the results of the copies: the
/// script reports a missing file when it calls the gateway.
[[nodiscard]] bool placeMexFile(std::string& error);

/// The CurVer of Matlab.Application: a programmatic name with the installed Matlab's version. Empty if none
/// is installed.
std::optional<std::wstring> installedMatlab();

/// Whether a CurVer of Matlab.Application means Matlab 5, 6 or 7.0, which load a MEX file as a DLL.
bool isOldMatlab(const std::wstring& currentVersion);

} // namespace solvane
