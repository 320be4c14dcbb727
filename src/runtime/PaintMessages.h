#pragma once

#include <windows.h>

namespace solvane {

/// Keeps the windows of a thread drawn while it waits: serves paint messages and leaves input in the queue. A
/// window that never becomes valid does not delay it.
class PaintMessages {
public:
    PaintMessages() = default;
    /// Posts the quit message of the thread's message loop again if it arrived meanwhile: checking for any
    /// message removes it.
    ~PaintMessages();
    PaintMessages(const PaintMessages&) = delete;
    PaintMessages& operator=(const PaintMessages&) = delete;

    /// Serves the waiting messages, up to a number and a time.
    void serve();

private:
    bool hasQuit_ = false;
    int exitCode_ = 0;
};

} // namespace solvane
