#pragma once

#include "studies/StudyRows.h"
#include "studies/StudyTable.h"
#include "studies/Variation.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace solvane::host {

/// Processes that calculate the points of a study, each with Matlab of its own, and a thread for each. What
/// is given must outlive them.
class StudyWorkers {
public:
    StudyWorkers(std::string casePath, const Case& flowsheet, const Design& design, const StudyTable& table,
                 StudyRows& rows)
        : casePath_(std::move(casePath)), case_(flowsheet), design_(design), table_(table), rows_(rows) {}
    /// Waits for the processes, which end with the points or after `StudyRows::stop`.
    ~StudyWorkers();
    StudyWorkers(const StudyWorkers&) = delete;
    StudyWorkers& operator=(const StudyWorkers&) = delete;

    void start(std::size_t count);

    /// Why no process could be started; empty if one could.
    std::string fault() const;

private:
    void work();

    const std::string casePath_;
    const Case& case_;
    const Design& design_;
    const StudyTable& table_;
    StudyRows& rows_;
    mutable std::mutex mutex_; ///< of the start of processes and `fault_`
    std::string fault_;
    std::vector<std::thread> threads_;
};

} // namespace solvane::host
