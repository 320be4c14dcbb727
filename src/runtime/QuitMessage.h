#pragma once

#include <windows.h>

namespace solvane {

/// Whether the thread's message loop is to end. A modal dialog or message box that ends for this reason
/// reports IDOK, as if the user had agreed.
inline bool isQuitting() {
    MSG message;
    return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) && message.message == WM_QUIT;
}

/// The quit message of the thread's message loop, which any check of the queue may remove. Posts it again at
/// the end, so that the loop ends.
class QuitMessage {
public:
    QuitMessage() = default;
    ~QuitMessage() {
        if (isKept_)
            PostQuitMessage(exitCode_);
    }
    QuitMessage(const QuitMessage&) = delete;
    QuitMessage& operator=(const QuitMessage&) = delete;

    /// Whether a message taken from the queue is the quit message. Keeps it if so.
    bool keep(const MSG& message) {
        if (message.message != WM_QUIT)
            return false;
        isKept_ = true;
        exitCode_ = static_cast<int>(message.wParam);
        return true;
    }

private:
    bool isKept_ = false;
    int exitCode_ = 0;
};

} // namespace solvane
