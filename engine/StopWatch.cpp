#include "StopWatch.h"

#include "ClientWatch.h"
#include "channel/StopEvent.h"

namespace solvane::engine {

namespace {

Handle openStopEvent() {
    return Handle(OpenEventW(SYNCHRONIZE, FALSE, stopEventName(clientProcess()).c_str()));
}

} // namespace

bool isStopRequested() {
    const Handle event = openStopEvent();
    return event && WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0;
}

StopWatch::StopWatch(std::function<void()> stop) : stop_(std::move(stop)), event_(openStopEvent()) {
    if (event_ &&
        !RegisterWaitForSingleObject(&wait_, event_.get(), requested, this, INFINITE, WT_EXECUTEONLYONCE))
        wait_ = nullptr;
}

void CALLBACK StopWatch::requested(void* watch, BOOLEAN) {
    static_cast<StopWatch*>(watch)->stop_();
}

StopWatch::~StopWatch() {
    if (wait_)
        UnregisterWaitEx(wait_, INVALID_HANDLE_VALUE);
}

} // namespace solvane::engine
