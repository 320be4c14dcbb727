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

void centreOverOwner(HWND dialog) {
    RECT own{};
    RECT around{};
    if (!GetWindowRect(dialog, &own) || !GetWindowRect(GetWindow(dialog, GW_OWNER), &around))
        return;
    const LONG left = around.left + (around.right - around.left - (own.right - own.left)) / 2;
    const LONG top = around.top + (around.bottom - around.top - (own.bottom - own.top)) / 2;
    SetWindowPos(dialog, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Layout::move(HWND control, const Box& box) {
    positions_ = DeferWindowPos(positions_, control, nullptr, box.left, box.top, std::max(box.width, 0),
                                std::max(box.height, 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace solvane
