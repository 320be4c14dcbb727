#pragma once

#include <windows.h>

namespace solvane {

/// The host's window, which owns the unit's windows; null if there is none.
HWND FindHostWindow();

} // namespace solvane
