#pragma once

#include <chrono>
#include <string>

namespace solvane::soak {

/// A line now and then that tells how far a segment has come.
class Progress {
public:
    /// Tells the start too.
    Progress(std::string what, int count);
    /// That many are done. Prints every ten seconds, and the last.
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
