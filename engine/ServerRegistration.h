/// The registration of this server.
#pragma once

#include <windows.h>

#include <string>

namespace solvane::engine {

inline constexpr CLSID automationClass = {
    0x99a86bc0, 0x7bad, 0x4400, {0xa4, 0x53, 0x90, 0x14, 0xcf, 0xbb, 0xf8, 0xc5}};

enum class RegistrationScope { machine, user };

/// Registers the program under its own name and, unless that belongs to a Matlab in either scope, also under
/// Matlab's name, and sets `standsForMatlab` accordingly. False with a text that names the key.
bool registerServer(RegistrationScope scope, const std::wstring& program, bool& standsForMatlab,
                    std::wstring& error);

/// Removes from the scope those entries of registerServer that lead to this server.
bool unregisterServer(RegistrationScope scope, std::wstring& error);

} // namespace solvane::engine
