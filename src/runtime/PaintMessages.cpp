#include "PaintMessages.h"

namespace solvane {

namespace {

// The limits of one check of the queue: a window that invalidates itself while it paints always has a
// message.
constexpr int mostMessages = 100;
constexpr ULONGLONG longestLook = 10; // ms

} // namespace

void PaintMessages::serve() {
    const ULONGLONG begin = GetTickCount64();
    MSG message;
    for (int count = 0; count < mostMessages && GetTickCount64() - begin <= longestLook &&
                        PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE);
         ++count)
        if (!quitMessage_.keep(message))
            DispatchMessageW(&message);
}

} // namespace solvane
