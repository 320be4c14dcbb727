#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace solvane {

/// A string value of a key; empty if the key or the value is missing or of another type. Does not expand
/// environment variables. An empty value name reads the key's default value. `view` may be
/// KEY_WOW64_32KEY or KEY_WOW64_64KEY.
std::optional<std::wstring> readRegistryString(HKEY root, const std::wstring& key,
                                               const std::wstring& valueName, REGSAM view = 0);

/// Creates the key if it is missing. Returns a Windows error code.
LSTATUS writeRegistryString(HKEY root, const std::wstring& key, const std::wstring& valueName,
                            const std::wstring& value, REGSAM view = 0);

/// Replaces environment variables, such as %TEMP%. One that is not set stays as it is.
std::wstring expandVariables(const std::wstring& text);

} // namespace solvane
