/// Paths under Wine, where Octave is a Linux program.
#pragma once

#include <string>

namespace solvane::engine {

/// The Linux path of a Windows path under Wine, whether or not the file exists; empty if there is no such
/// path.
std::wstring unixPath(const std::wstring& windowsPath);

/// The Windows path of a Linux path that begins with a slash. It needs no drive; Wine can open files and
/// start programs by it.
std::wstring windowsPath(const std::wstring& unixPath);

} // namespace solvane::engine
