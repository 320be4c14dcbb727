#include "Progress.h"

#include <cstdio>
#include <utility>

namespace solvane::soak {

Progress::Progress(std::string what, int count) : what_(std::move(what)), count_(count) {
    print(0);
}

void Progress::at(int done) {
    if (done < count_ && Clock::now() - printed_ < std::chrono::seconds(10))
        return;
    printed_ = Clock::now();
    print(done);
}

void Progress::print(int done) const {
    const std::chrono::duration<double> elapsed = Clock::now() - begin_;
    std::printf("  %s: %d of %d, %.0f s\n", what_.c_str(), done, count_, elapsed.count());
    std::fflush(stdout);
}

} // namespace solvane::soak
