#include "RunWatch.h"

#include "cases/NumberText.h"
#include "channel/StopEvent.h"

#include <algorithm>

namespace solvane::host {

RunWatch::RunWatch(RunWatchSettings settings)
    : settings_(std::move(settings)),
      stopEvent_(CreateEventW(nullptr, TRUE, FALSE, stopEventName(GetCurrentProcessId()).c_str())),
      thread_([this] { watch(); }) {}

RunWatch::~RunWatch() {
    {
        const std::lock_guard guard(lock_);
        hasEnded_ = true;
    }
    changed_.notify_one();
    thread_.join();
    ResetEvent(stopEvent_.get()); // the engine may still have it open
}

void RunWatch::watch() {
    Clock::time_point nextBeat = start_ + settings_.heartbeat;
    const auto limit = settings_.limit ? start_ + std::chrono::duration_cast<Clock::duration>(
                                                      std::chrono::duration<double>(*settings_.limit))
                                       : Clock::time_point::max();
    std::unique_lock guard(lock_);
    while (!hasEnded_) {
        const bool isStopping = stopReason_ != StopReason::none;
        const auto next = isStopping ? patienceEnds_ : std::min(nextBeat, limit);
        if (Clock::now() < next) {
            changed_.wait_until(guard, next);
            continue;
        }
        guard.unlock();
        if (isStopping)
            return settings_.giveUp(*this);
        if (next == limit) {
            requestStop(StopReason::limit);
        } else {
            settings_.beat(stillRunning());
            nextBeat += settings_.heartbeat;
        }
        guard.lock();
    }
}

std::string RunWatch::stillRunning() const {
    const auto time = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start_);
    return "Still running after " + std::to_string(time.count()) + " s: " + place();
}

void RunWatch::requestStop(StopReason reason) {
    const std::lock_guard guard(lock_);
    if (stopReason_ != StopReason::none)
        return;
    stopReason_ = reason;
    patienceEnds_ = Clock::now() + settings_.patience;
    SetEvent(stopEvent_.get());
    changed_.notify_one();
}

StopReason RunWatch::stopReason() const {
    const std::lock_guard guard(lock_);
    return stopReason_;
}

std::string RunWatch::stopText() const {
    switch (stopReason()) {
    case StopReason::interruption:
        return "Interrupted";
    case StopReason::limit:
        return "The run did not end within the limit of " + exactNumber(*settings_.limit) + " s";
    case StopReason::none:
        break;
    }
    return {};
}

std::string RunWatch::place() const {
    const std::lock_guard guard(lock_);
    if (unit_.empty())
        return "no unit has started";
    return "unit \"" + unit_ + "\"" + (lastLine_.empty() ? "" : "; last log line: " + lastLine_);
}

std::string RunWatch::unit() const {
    const std::lock_guard guard(lock_);
    return unit_;
}

void RunWatch::beginUnit(std::string_view name) {
    const std::lock_guard guard(lock_);
    unit_ = name;
    lastLine_.clear();
}

void RunWatch::log(std::string_view line) {
    const std::lock_guard guard(lock_);
    lastLine_ = line.substr(0, line.find_first_of("\r\n"));
}

void stopRunsOf(DWORD process) {
    const Handle event(OpenEventW(EVENT_MODIFY_STATE, FALSE, stopEventName(process).c_str()));
    SetEvent(event.get());
}

} // namespace solvane::host
