#pragma once

#include <chrono>
#include <string>

namespace solvane::soak {

/// Prints now and then how far a segment has come.
class Progress {
public:
    /// Prints the start too.
    Progress(std::string what, int count);
    /// Prints every ten seconds how many are done, and the last one always.
    void at(int done);

private:
    using Clock = std::chrono::steady_clock;

    void print(int done) const;

    std::string what_;
    int count_;
    Clock::time_point begin_ = Clock::now();
    Clock::time_point printed_ = begin_;
};

} // namespace solvane::soak
