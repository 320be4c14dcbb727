#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace solvane::soak {

/// How much to do: an ordinary soak takes some minutes, a full one hours.
struct Effort {
    bool isFull = false;
    double scale = 1; ///< a factor on every count
    std::uint32_t seed = 1;
    std::optional<int> input; ///< only this one of the damaged inputs

    /// At least 1.
    int of(int ordinary, int full) const {
        return std::max(1, static_cast<int>((isFull ? full : ordinary) * scale));
    }
};

} // namespace solvane::soak
