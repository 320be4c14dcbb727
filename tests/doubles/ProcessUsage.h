#pragma once

#include <windows.h>

#include <cstddef>

namespace solvane {

/// What a process holds of the system, to find what a test leaves behind.
struct ProcessUsage {
    DWORD handles = 0; ///< places in the process's table; under Wine it doubles when it is full
    DWORD threads = 0;
    DWORD gdiObjects = 0;   ///< fonts, brushes, bitmaps; of this process only
    std::size_t memory = 0; ///< bytes of its own
    std::size_t peak = 0;   ///< most bytes that lay in memory at a time

    static ProcessUsage now();
    /// All 0 where there is no such process.
    static ProcessUsage of(DWORD processId);
};

} // namespace solvane
