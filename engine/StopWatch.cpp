#include "StopWatch.h"

#include "ClientWatch.h"
#include "channel/StopEvent.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace solvane::engine {

namespace {

/// The time for a script to end by itself: the unit's functions fail, which gives the error a line.
constexpr std::chrono::milliseconds grace(500);

/// The client's event and the wait for it. Both stay from one command to the next: under Wine, opening and
/// closing them takes as long as the rest of a short command.
class StopRequests {
public:
    /// Never destroyed: the wait may end while the process does.
    static StopRequests& current() {
        static StopRequests& requests = *new StopRequests;
        return requests;
    }

    bool isPending() {
        findEvent();
        return event_ && WaitForSingleObject(event_.get(), 0) == WAIT_OBJECT_0;
    }

    void callAtRequest(std::function<void()> stop) {
        findEvent();
        {
            const std::lock_guard guard(lock_);
            stop_ = std::move(stop);
            ++command_;
        }
        if (event_ && !isWaiting_)
            startWaiting();
    }

    void forget() {
        const std::lock_guard guard(lock_);
        stop_ = nullptr;
        ended_.notify_one();
    }

private:
    /// The event of a client exists once its first run begins.
    void findEvent() {
        const DWORD client = clientProcess();
        if (event_ && client == client_)
            return;
        endWait();
        client_ = client;
        event_.reset(OpenEventW(SYNCHRONIZE, FALSE, stopEventName(client).c_str()));
    }

    void startWaiting() {
        endWait();
        isWaiting_ = true; // before the wait, which may be over at once
        if (!RegisterWaitForSingleObject(&wait_, event_.get(), requested, this, INFINITE,
                                         WT_EXECUTEONLYONCE | WT_EXECUTELONGFUNCTION)) {
            wait_ = nullptr;
            isWaiting_ = false;
        }
    }

    /// Returns after a call in progress.
    void endWait() {
        if (wait_)
            UnregisterWaitEx(wait_, INVALID_HANDLE_VALUE);
        wait_ = nullptr;
        isWaiting_ = false;
    }

    /// A request between two commands is left to the question before the next one.
    static void CALLBACK requested(void* object, BOOLEAN) {
        auto& requests = *static_cast<StopRequests*>(object);
        requests.isWaiting_ = false; // first: a command that begins now waits anew
        std::unique_lock guard(requests.lock_);
        const auto hasEnded = [&requests, command = requests.command_] {
            return !requests.stop_ || requests.command_ != command;
        };
        if (!requests.ended_.wait_for(guard, grace, hasEnded))
            std::exchange(requests.stop_, nullptr)();
    }

    // Of the thread that takes the commands.
    DWORD client_ = 0;
    Handle event_; // null for a client that never asks
    HANDLE wait_ = nullptr;

    std::atomic<bool> isWaiting_ = false;
    std::mutex lock_; // held during the call of `stop_`; guards what follows
    std::condition_variable ended_;
    std::function<void()> stop_; // of the command in progress
    unsigned command_ = 0;       // its number
};

} // namespace

bool isStopRequested() {
    return StopRequests::current().isPending();
}

StopWatch::StopWatch(std::function<void()> stop) {
    StopRequests::current().callAtRequest(std::move(stop));
}

StopWatch::~StopWatch() {
    StopRequests::current().forget();
}

} // namespace solvane::engine
