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
    std::unique_lock guard(lock_);
    while (!hasEnded_) {
        const bool isStopping = stopReason_ != StopReason::none;
        const auto limit = settings_.limit && runStart_
                               ? *runStart_ + std::chrono::duration_cast<Clock::duration>(
                                                  std::chrono::duration<double>(*settings_.limit))
                               : Clock::time_point::max();
        const auto next = isStopping ? patienceEnds_ : std::min(nextBeat_, limit);
        if (Clock::now() < next) {
            changed_.wait_until(guard, next);
            continue;
        }
        if (!isStopping && next == limit) {
            stop(StopReason::limit);
            continue;
        }
        nextBeat_ += settings_.heartbeat;
        guard.unlock();
        if (isStopping)
            return settings_.giveUp(*this);
        settings_.beat(stillRunning());
        guard.lock();
    }
}

std::string RunWatch::stillRunning() const {
    const auto time = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start_);
    return "Still running after " + std::to_string(time.count()) + " s: " + place();
}

void RunWatch::requestStop(StopReason reason) {
    const std::lock_guard guard(lock_);
    stop(reason);
    changed_.notify_one();
}

void RunWatch::stop(StopReason reason) {
    if (stopReason_ != StopReason::none)
        return;
    stopReason_ = reason;
    patienceEnds_ = Clock::now() + settings_.patience;
    SetEvent(stopEvent_.get());
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
    const std::string run = run_.empty() ? "" : run_ + ": ";
    if (unit_.empty())
        return run + "no unit has started";
    return run + "unit \"" + unit_ + "\"" + (lastLine_.empty() ? "" : "; last log line: " + lastLine_);
}

std::string RunWatch::unit() const {
    const std::lock_guard guard(lock_);
    return unit_;
}

std::chrono::seconds RunWatch::runTime() const {
    const std::lock_guard guard(lock_);
    return std::chrono::duration_cast<std::chrono::seconds>(runStart_ ? Clock::now() - *runStart_
                                                                      : Clock::duration());
}

void RunWatch::postponeBeat() {
    const std::lock_guard guard(lock_);
    nextBeat_ = Clock::now() + settings_.heartbeat;
}

void RunWatch::beginRun(std::string_view name) {
    const std::lock_guard guard(lock_);
    run_ = name;
    unit_.clear();
    lastLine_.clear();
    runStart_ = Clock::now();
    changed_.notify_one();
}

void RunWatch::endRun() {
    const std::lock_guard guard(lock_);
    runStart_.reset();
    if (stopReason_ == StopReason::limit) {
        stopReason_ = StopReason::none;
        ResetEvent(stopEvent_.get());
    }
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
