#pragma once

#include <windows.h>

#include <cstddef>

namespace solvane {

/// What this process holds of the system, to find what a test leaves behind.
struct ProcessUsage {
    DWORD handles = 0;
    DWORD gdiObjects = 0;   ///< fonts, brushes, bitmaps
    std::size_t memory = 0; ///< bytes of its own

    static ProcessUsage now();
};

} // namespace solvane
