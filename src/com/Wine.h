#pragma once

#include <windows.h>

namespace solvane {

/// Whether Windows is Wine, where programs of a Unix system stand beside.
inline bool isWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

} // namespace solvane
