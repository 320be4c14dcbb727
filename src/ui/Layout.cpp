#include "Layout.h"

#include <algorithm>

namespace solvane {

Box boxOf(HWND control) {
    RECT rectangle{};
    GetWindowRect(control, &rectangle);
    MapWindowPoints(HWND_DESKTOP, GetParent(control), reinterpret_cast<POINT*>(&rectangle), 2);
    return {rectangle.left, rectangle.top, rectangle.right - rectangle.left,
            rectangle.bottom - rectangle.top};
}

void Layout::move(HWND control, const Box& box) {
    positions_ = DeferWindowPos(positions_, control, nullptr, box.left, box.top, std::max(box.width, 0),
                                std::max(box.height, 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace solvane
