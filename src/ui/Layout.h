/// Where controls stand after a window's size has changed. In pixels of the window's client area.
#pragma once

#include <windows.h>

namespace solvane {

/// Between controls, and to the window's edge.
inline constexpr int layoutMargin = 5;

struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int right() const { return left + width; }
    int bottom() const { return top + height; }
};

/// Where a control stands within its parent.
Box boxOf(HWND control);

/// Moves a dialog to the middle of the window that owns it; one without an owner stays.
void centreOverOwner(HWND dialog);

/// Moves a window's controls together, at the end of its life, so that nothing flickers.
class Layout {
public:
    Layout() : positions_(BeginDeferWindowPos(16)) {}
    ~Layout() { EndDeferWindowPos(positions_); }
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

    void move(HWND control, const Box& box);

private:
    HDWP positions_;
};

} // namespace solvane
