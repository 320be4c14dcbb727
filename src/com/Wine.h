#pragma once

#include <windows.h>

namespace solvane {

/// Whether this is Wine, where the programs of a Unix system are available too.
inline bool isWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

} // namespace solvane
