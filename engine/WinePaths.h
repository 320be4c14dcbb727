/// What differs where Windows is Wine, and Octave a Linux program beside it.
#pragma once

#include <string>

namespace solvane::engine {

/// The Linux path of a Windows path under Wine, whether or not it exists; empty where there is none.
std::wstring unixPath(const std::wstring& windowsPath);

/// The Windows path of a Linux path that begins with a slash. It needs no drive, and Wine opens files and
/// starts programs through it.
std::wstring windowsPath(const std::wstring& unixPath);

} // namespace solvane::engine
