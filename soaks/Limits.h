/// What holds: every row of a soak's table, in its order.
#pragma once

#include "Figures.h"

#include <array>

namespace solvane::soak {

/// Of a segment that tries damaged inputs at a door. Where it calls another process, COM's pool grows and
/// shrinks by a thread.
constexpr auto doorLimits(const char* segment, double threads = 0) {
    return std::array{
        Limit{segment, "damaged inputs", "", Bound::none, 0},
        Limit{segment, "taken all the same", "", Bound::atLeast,
              1}, // else the damage is too coarse to reach far
        Limit{segment, "crashes, silent refusals, wrong answers", "", Bound::atMost, 0},
        Limit{segment, "longest", "s", Bound::atMost, 30},
        Limit{segment, "files outside the unit's folder", "", Bound::atMost, 0},
        Limit{segment, "host: handles gained", "", Bound::atMost, 0},
        Limit{segment, "host: threads gained", "", Bound::atMost, threads},
        Limit{segment, "host: memory gained", "KiB", Bound::atMost, 4096},
    };
}

template <std::size_t... Counts>
constexpr auto joined(const std::array<Limit, Counts>&... parts) {
    std::array<Limit, (Counts + ...)> all{};
    std::size_t next = 0;
    const auto append = [&](const auto& part) {
        for (const Limit& limit : part)
            all[next++] = limit;
    };
    (append(parts), ...);
    return all;
}

inline constexpr std::array limitsOfWork = {
    Limit{"commands", "commands of a played gateway", "", Bound::none, 0},
    Limit{"commands", "wrong answers", "", Bound::atMost, 0},
    Limit{"commands", "failed runs", "", Bound::atMost, 0},
    Limit{"commands", "host: handles gained", "", Bound::atMost, 0},
    Limit{"commands", "host: threads gained", "", Bound::atMost, 0},
    Limit{"commands", "host: memory gained", "KiB", Bound::atMost, 256},
    Limit{"commands", "temporary files gained", "", Bound::atMost, 0},

    Limit{"runs", "runs on the real engine", "", Bound::none, 0},
    Limit{"runs", "commands of the real gateway", "", Bound::none, 0},
    Limit{"runs", "failed runs and wrong answers", "", Bound::atMost, 0},
    Limit{"runs", "different products of 20 temperatures", "", Bound::atLeast, 20},
    Limit{"runs", "host: handles gained", "", Bound::atMost, 0},
    Limit{"runs", "host: threads gained", "", Bound::atMost, 0},
    Limit{"runs", "host: memory gained", "KiB", Bound::atMost, 256},
    Limit{"runs", "engine: handles gained", "", Bound::atMost, 0},
    // COM's pool there grows and shrinks by a thread, whose stack counts a MiB.
    Limit{"runs", "engine: threads gained", "", Bound::atMost, 2},
    Limit{"runs", "engine: memory gained", "KiB", Bound::atMost, 2048 + 256},
    Limit{"runs", "Octave: memory gained a run", "KiB", Bound::atMost, 4},
    Limit{"runs", "temporary files gained", "", Bound::atMost, 0},

    Limit{"together", "runs of eight units at once", "", Bound::none, 0},
    Limit{"together", "failed runs and other streams than alone", "", Bound::atMost, 0},
    Limit{"together", "units whose streams differ", "", Bound::atLeast, 8},
    Limit{"together", "folders left behind", "", Bound::atMost, 0},
    Limit{"together", "engines left after ten seconds", "", Bound::atMost, 0},

    Limit{"shared", "runs of four simulators on one Matlab", "", Bound::none, 0},
    Limit{"shared", "simulators killed beside them", "", Bound::none, 0},
    Limit{"shared", "failed runs and runs in another's folder", "", Bound::atMost, 0},
    Limit{"shared", "rounds after which Matlab's folder is gone", "", Bound::atMost, 0},
    Limit{"shared", "folders left behind", "", Bound::atMost, 0},

    Limit{"engine", "kills of the engine", "", Bound::none, 0},
    Limit{"engine", "runs or starts that failed by it", "", Bound::none, 0},
    Limit{"engine", "failures without a clear error", "", Bound::atMost, 0},
    Limit{"engine", "next runs that failed or gave other streams", "", Bound::atMost, 0},
    Limit{"engine", "processes left after ten seconds", "", Bound::atMost, 0},
    Limit{"engine", "temporary folders left", "", Bound::atMost, 0},

    Limit{"host", "kills of the host", "", Bound::none, 0},
    Limit{"host", "processes left after ten seconds", "", Bound::atMost, 0},
    Limit{"host", "servers that the dying host created and never let run", "", Bound::none, 0},
    Limit{"host", "next hosts that failed", "", Bound::atMost, 0},
    Limit{"host", "temporary folders of the dead", "", Bound::none, 0},
    Limit{"host", "temporary folders left after the next start", "", Bound::atMost, 0},
};

inline constexpr std::array limitsOfModels = {
    Limit{"models", "host: peak memory gained", "KiB", Bound::atMost, 200 * 1024},
};

inline constexpr std::array limitsOfEngine = {
    Limit{"socket", "engine: handles gained", "", Bound::atMost, 0},
    Limit{"socket", "engine: threads gained", "", Bound::atMost, 0},
    Limit{"socket", "engine: memory gained", "KiB", Bound::atMost, 4096},

    // Of the strangers 32 are listened to, at two handles each; the guest has a thread, whose stack counts 2
    // MiB.
    Limit{"strangers", "slow strangers at once", "", Bound::none, 0},
    Limit{"strangers", "guests not served", "", Bound::atMost, 0},
    Limit{"strangers", "longest service", "s", Bound::atMost, 5},
    Limit{"strangers", "engine: handles at most gained", "", Bound::atMost, 128},
    Limit{"strangers", "engine: threads at most gained", "", Bound::atMost, 2},
    Limit{"strangers", "engine: memory at most gained", "KiB", Bound::atMost, 4096},
};

inline constexpr auto limits =
    joined(limitsOfWork, doorLimits("models"), limitsOfModels, doorLimits("bags"), doorLimits("requests10"),
           doorLimits("requests11"), doorLimits("reentry"), doorLimits("cases"), doorLimits("socket", 1),
           limitsOfEngine);

} // namespace solvane::soak
