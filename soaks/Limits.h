/// What holds: every row of a soak's table, in its order.
#pragma once

#include "Figures.h"

#include <array>

namespace solvane::soak {

inline constexpr std::array limits = {
    Limit{"runs", "runs on the real engine", "", Bound::none, 0},
    Limit{"runs", "failed runs and wrong answers", "", Bound::atMost, 0},
};

} // namespace solvane::soak
