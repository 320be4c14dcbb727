/// The client's process, with which this one ends.
#pragma once

#include "com/Handle.h"

namespace solvane::engine {

/// The process of the client that made the call in progress; 0 if it is unknown.
DWORD clientProcess();

/// Under Wine, calls `cleanUp` on a thread other than the main one and ends this process when its client's
/// process ends for whatever reason. Wine's COM does not notice that end, but starts the server from the
/// client's process, so that the parent is the client.
///
/// Windows' COM pings its clients, and releases after some minutes what a dead client held, which ends this
/// process as well, unless it is running a command.
void endWithClient(void (*cleanUp)() = nullptr);

/// On Windows, while this object exists, the end of the process that made the call in progress calls
/// `cleanUp` on another thread and ends this process: a command may run forever, and blocks the thread to
/// which COM would report the client's end.
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
