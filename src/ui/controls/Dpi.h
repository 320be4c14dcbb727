#pragma once

#include <windows.h>

namespace solvane {

/// Templates and fonts are sized for this resolution, 100 %.
inline constexpr int usualDpi = 96;

/// Pixels per inch on the screen that the window is on.
int dpiOf(HWND window);

} // namespace solvane
