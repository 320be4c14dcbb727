/// The places of controls in a resized window, in pixels of its client area.
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

/// Centres a dialog over its owner; a dialog without an owner stays.
void centreOverOwner(HWND dialog);

/// Collects moves of a window's controls and does them together when it is destroyed, so that nothing
/// flickers.
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
