/// Watches a run from another thread: its heartbeat, its time limit, and its stop.
#pragma once

#include "com/Handle.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace solvane::host {

enum class StopReason { none, interruption, limit };

class RunWatch;

struct RunWatchSettings {
    using Duration = std::chrono::milliseconds;

    std::optional<double> limit{}; ///< s, for each run
    Duration heartbeat = std::chrono::seconds(10);
    Duration patience = std::chrono::seconds(2); ///< how long a run may take to end after a stop request

    // Called on the watch's thread.
    std::function<void(const std::string& line)> beat = [](const std::string&) {
    }; ///< at each heartbeat, with what runs
    std::function<void(const RunWatch&)> giveUp = [](const RunWatch&) {}; ///< once, when patience runs out
};

/// Lives as long as a run, or several that follow one another, between calls of
/// `beginRun` and `endRun`. A process has one at a time.
///
/// A stop request reaches the unit and the engine, which know the event of this process: the script's next
/// call of the unit fails, half a second later its next statement, and if it still goes on the engine ends
/// it. The unit's Calculate fails, and the unit cleans up, as after any error. Matlab does not know the
/// event: it runs a script that does not call the unit to its end, and only `giveUp` can end the program in
/// time.
class RunWatch {
public:
    explicit RunWatch(RunWatchSettings settings);
    ~RunWatch();
    RunWatch(const RunWatch&) = delete;
    RunWatch& operator=(const RunWatch&) = delete;

    // From any thread.

    /// The first request counts.
    void requestStop(StopReason reason = StopReason::interruption);
    StopReason stopReason() const;
    bool isStopRequested() const { return stopReason() != StopReason::none; }
    /// Why the run was stopped, as an error's text. Empty if it was not.
    std::string stopText() const;
    /// The run's name, the unit that runs, and its last log line: one line, UTF-8.
    std::string place() const;
    /// The unit that runs. Empty before the first.
    std::string unit() const;
    /// Since the run began; 0 between runs.
    std::chrono::seconds runTime() const;
    /// The user has just seen how far the run is: the next heartbeat is a whole interval away.
    void postponeBeat();

    // From the run's thread.

    /// One of several runs, with a time limit of its own.
    void beginRun(std::string_view name);
    /// Its limit stops the next one no longer.
    void endRun();

    /// From now on, this unit runs.
    void beginUnit(std::string_view name);
    void log(std::string_view line);

private:
    using Clock = std::chrono::steady_clock;

    void watch();
    void stop(StopReason reason); ///< with `lock_` held
    std::string stillRunning() const;

    const RunWatchSettings settings_;
    const Clock::time_point start_ = Clock::now();
    const Handle stopEvent_;

    mutable std::mutex lock_; // guards what follows
    std::condition_variable changed_;
    std::optional<Clock::time_point> runStart_ = start_; // none between runs
    Clock::time_point nextBeat_ = start_ + settings_.heartbeat;
    StopReason stopReason_ = StopReason::none;
    Clock::time_point patienceEnds_{}; // after a stop request
    bool hasEnded_ = false;
    std::string run_;
    std::string unit_;
    std::string lastLine_;

    std::thread thread_;
};

/// Makes the engines of another process of this program end its scripts. Its watch does not know, so that the
/// runs fail as by an error of the script.
void stopRunsOf(DWORD process);

} // namespace solvane::host
