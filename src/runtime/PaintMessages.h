#pragma once

#include "QuitMessage.h"

namespace solvane {

/// Keeps the windows of a thread drawn while it waits: serves paint messages and leaves input in the queue. A
/// window that never becomes valid does not delay it.
class PaintMessages {
public:
    /// Serves the waiting messages, up to a number and a time.
    void serve();

private:
    QuitMessage quitMessage_;
};

} // namespace solvane
