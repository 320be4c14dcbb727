#pragma once

#include "studies/StudyRows.h"

#include <chrono>

namespace solvane::host {

/// Shows on stderr how far a study is: on a console in one line that changes, otherwise in a line from time
/// to time.
class ProgressLine {
public:
    ProgressLine();

    /// To be called several times per second; shows when it is time.
    void show(const StudyProgress& progress);
    /// Leaves the console's line.
    void finish(const StudyProgress& progress);

private:
    using Clock = std::chrono::steady_clock;

    void print(const StudyProgress& progress) const;

    const bool isConsole_;
    const Clock::time_point start_ = Clock::now();
    Clock::time_point next_;
};

} // namespace solvane::host
