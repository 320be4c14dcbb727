/// The end of this process with the one that it works for.
#pragma once

#include "com/Handle.h"

namespace solvane::engine {

/// Under Wine ends this process when its client's process ends, however that comes, and calls `cleanUp`
/// before, on another thread than the main one. Wine's COM does not notice such an end, but starts the server
/// from the client's own process, so that the parent is the client.
///
/// Windows' COM pings its clients, and releases after some minutes what a dead one held, which ends this
/// process as well, unless it is in the middle of a command.
void endWithClient(void (*cleanUp)() = nullptr);

/// On Windows, while it lives, the end of the process that made the call in progress ends this one: a command
/// may take for ever, and the thread that it keeps waiting is the one to which COM would report the client's
/// end. `cleanUp` is called before, on another thread.
class CallerWatch {
public:
    explicit CallerWatch(void (*cleanUp)());
    ~CallerWatch();
    CallerWatch(const CallerWatch&) = delete;
    CallerWatch& operator=(const CallerWatch&) = delete;

private:
    static void CALLBACK callerHasEnded(void* watch, BOOLEAN);

    void (*cleanUp_)();
    Handle caller_;
    HANDLE wait_ = nullptr;
};

} // namespace solvane::engine
