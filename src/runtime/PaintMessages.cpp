#include "PaintMessages.h"

namespace solvane {

namespace {

// The limits of one check of the queue: a window that invalidates itself while it paints always has a
// message.
constexpr int mostMessages = 100;
constexpr ULONGLONG longestLook = 10; // ms

} // namespace

PaintMessages::~PaintMessages() {
    if (hasQuit_)
        PostQuitMessage(exitCode_);
}

void PaintMessages::serve() {
    const ULONGLONG begin = GetTickCount64();
    MSG message;
    for (int count = 0; count < mostMessages && GetTickCount64() - begin <= longestLook &&
                        PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE);
         ++count) {
        if (message.message == WM_QUIT) {
            hasQuit_ = true;
            exitCode_ = static_cast<int>(message.wParam);
        } else {
            DispatchMessageW(&message);
        }
    }
}

} // namespace solvane
