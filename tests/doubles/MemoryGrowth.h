/// What a repetition adds to the memory of this process.
#pragma once

#include "ProcessUsage.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace solvane {

/// Compares the least memory in the second and in the last quarter of a repetition: newer Wines keep
/// megabytes of a heap for a while after they are free.
class MemoryGrowth {
public:
    explicit MemoryGrowth(int count) : count_(std::max(count, 1)) {}

    /// Call before each turn, of which the first is 0.
    void at(int turn) {
        const int step = std::max(1, count_ / 100);
        const int quarter = static_cast<int>(std::int64_t{4} * turn / count_);
        if (turn % step == 0)
            least_[quarter] = std::min(least_[quarter], ProcessUsage::now().memory);
    }

    /// Bytes; 0 for fewer than four turns.
    double gained() const {
        return count_ < 4 ? 0 : static_cast<double>(least_[3]) - static_cast<double>(least_[1]);
    }

private:
    int count_;
    std::array<std::size_t, 4> least_{SIZE_MAX, SIZE_MAX, SIZE_MAX, SIZE_MAX};
};

} // namespace solvane
