#pragma once

#include <windows.h>

namespace solvane {

/// The window of the host that owns the unit's own windows; null where there is none.
HWND FindHostWindow();

} // namespace solvane
