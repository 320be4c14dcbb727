/// The parts of a soak. Each has a file of its own and its rows in Limits.h.
#pragma once

#include "Effort.h"
#include "Figures.h"

#include <array>

namespace solvane::soak {

void soakRuns(const Effort& effort, const Figures& figures);

struct Segment {
    const char* name;
    const char* summary;
    void (*run)(const Effort& effort, const Figures& figures);
};

/// In the order in which they run.
inline constexpr std::array segments = {
    Segment{"runs", "One unit, many runs on the real engine: right answers, and nothing grows", soakRuns},
};

} // namespace solvane::soak
