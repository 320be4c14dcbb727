/// The client's request to stop its commands.
#pragma once

#include "com/Handle.h"

#include <functional>

namespace solvane::engine {

/// Whether the client that made the call in progress asks for a stop.
bool isStopRequested();

/// While this object exists, such a request calls `stop`, once and on another thread.
class StopWatch {
public:
    explicit StopWatch(std::function<void()> stop);
    ~StopWatch();
    StopWatch(const StopWatch&) = delete;
    StopWatch& operator=(const StopWatch&) = delete;

private:
    static void CALLBACK requested(void* watch, BOOLEAN);

    std::function<void()> stop_;
    Handle event_; // null for a client that never asks
    HANDLE wait_ = nullptr;
};

} // namespace solvane::engine
