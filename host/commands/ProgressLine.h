#pragma once

#include "studies/StudyRows.h"

#include <chrono>

namespace solvane::host {

/// Shows on stderr how far a study is: on a console in one line that changes, otherwise in a line from time
/// to time.
class ProgressLine {
public:
    ProgressLine();

    /// How long to wait until the next `show`.
    std::chrono::milliseconds period() const;
    void show(const StudyProgress& progress);
    /// Leaves the console's line.
    void finish(const StudyProgress& progress);

private:
    double seconds() const;

    bool isConsole_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

} // namespace solvane::host
