#pragma once

#include <windows.h>

namespace solvane {

/// What a length of templates and fonts is measured against: at 100 %.
inline constexpr int usualDpi = 96;

/// Pixels per inch on the screen that the window is on.
int dpiOf(HWND window);

} // namespace solvane
