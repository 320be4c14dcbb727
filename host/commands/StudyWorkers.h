#pragma once

#include "studies/StudyRows.h"
#include "studies/StudyTable.h"
#include "studies/Variation.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace solvane::host {

class Worker;

/// What the processes of a study are started with.
struct WorkerOptions {
    std::string casePath;
    std::optional<double> limit; ///< s, for each point
};

/// Processes that calculate the points of a study, each with Matlab of its own, and a thread for each. What
/// is given must outlive them.
class StudyWorkers {
public:
    StudyWorkers(WorkerOptions options, const Case& flowsheet, const Design& design, const StudyTable& table,
                 StudyRows& rows);
    /// Does what `finish` does.
    ~StudyWorkers();
    StudyWorkers(const StudyWorkers&) = delete;
    StudyWorkers& operator=(const StudyWorkers&) = delete;

    void start(std::size_t count);

    /// Waits for the processes, which end with the points or after `StudyRows::stop`.
    void finish();

    // From any thread.

    /// Stops the runs that are under way.
    void stopRuns();
    /// Ends the processes by force.
    void terminate();

    /// Why a process could not be started; empty if all could.
    std::string fault() const;

private:
    void work(std::unique_ptr<Worker>& worker);
    bool start(std::unique_ptr<Worker>& worker);
    void end(std::unique_ptr<Worker>& worker);

    const WorkerOptions options_;
    const Case& case_;
    const Design& design_;
    const StudyTable& table_;
    StudyRows& rows_;
    mutable std::mutex mutex_;                     ///< of what follows, and of the start of processes
    std::vector<std::unique_ptr<Worker>> workers_; ///< by thread; null while there is none
    std::string fault_;
    std::vector<std::thread> threads_;
};

} // namespace solvane::host
