/// The client's request to stop its commands. All this is for the thread that takes them.
#pragma once

#include <functional>

namespace solvane::engine {

/// Whether the client that made the call in progress asks for a stop.
bool isStopRequested();

/// While this object exists, such a request calls `stop`, once and on another thread. First a script has half
/// a second to end by itself: the unit's functions fail. There is one at a time.
class StopWatch {
public:
    explicit StopWatch(std::function<void()> stop);
    ~StopWatch();
    StopWatch(const StopWatch&) = delete;
    StopWatch& operator=(const StopWatch&) = delete;
};

} // namespace solvane::engine
