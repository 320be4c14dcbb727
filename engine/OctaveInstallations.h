/// Where the installers of GNU Octave leave it on Windows.
#pragma once

#include <string>
#include <vector>

namespace solvane::engine {

/// The programs octave-cli.exe of all installed versions, the newest first. Looks at the list of installed
/// programs and in the folders that the installers propose.
std::vector<std::wstring> installedOctaves();

} // namespace solvane::engine
