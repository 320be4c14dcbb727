#pragma once

#include <windows.h>

namespace solvane {

/// Keeps the windows of a thread drawn while it waits for something: serves paint messages and leaves input
/// where it is. A window that never becomes valid does not hold it up.
class PaintMessages {
public:
    PaintMessages() = default;
    /// Posts the end of the thread's message loop again if that has come meanwhile: a look for any message
    /// takes it too.
    ~PaintMessages();
    PaintMessages(const PaintMessages&) = delete;
    PaintMessages& operator=(const PaintMessages&) = delete;

    /// Serves what there is, within bounds of number and time.
    void serve();

private:
    bool hasQuit_ = false;
    int exitCode_ = 0;
};

} // namespace solvane
