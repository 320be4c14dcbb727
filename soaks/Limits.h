/// The limits: every row of a soak's table, in its order.
#pragma once

#include "Figures.h"

#include <array>

namespace solvane::soak {

/// For a segment that tries damaged inputs at a door. If it calls another process, COM's pool of threads
/// grows and shrinks by one.
constexpr auto doorLimits(const char* segment, double threads = 0) {
    return std::array{
        Limit{segment, "damaged inputs", "", Bound::none, 0},
        Limit{segment, "damaged inputs accepted", "", Bound::atLeast,
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
    Limit{"commands", "commands of a simulated gateway", "", Bound::none, 0},
    Limit{"commands", "wrong answers", "", Bound::atMost, 0},
    Limit{"commands", "failed runs", "", Bound::atMost, 0},
    Limit{"commands", "host: handles gained", "", Bound::atMost, 0},
    Limit{"commands", "host: threads gained", "", Bound::atMost, 0},
    Limit{"commands", "host: memory gained", "KiB", Bound::atMost, 256},
    Limit{"commands", "temporary files gained", "", Bound::atMost, 0},

    Limit{"runs", "runs on the real engine", "", Bound::none, 0},
    Limit{"runs", "commands of the real gateway", "", Bound::none, 0},
    Limit{"runs", "failed runs and wrong answers", "", Bound::atMost, 0},
    Limit{"runs", "different products at 20 temperatures", "", Bound::atLeast, 20},
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
    Limit{"together", "runs that failed or gave different streams", "", Bound::atMost, 0},
    Limit{"together", "units whose streams differ", "", Bound::atLeast, 8},
    Limit{"together", "folders left", "", Bound::atMost, 0},
    Limit{"together", "engines left after ten seconds", "", Bound::atMost, 0},

    Limit{"shared", "runs of four simulators on one Matlab", "", Bound::none, 0},
    Limit{"shared", "simulators killed meanwhile", "", Bound::none, 0},
    Limit{"shared", "runs that failed or ran in another unit's folder", "", Bound::atMost, 0},
    Limit{"shared", "rounds after which Matlab's folder is missing", "", Bound::atMost, 0},
    Limit{"shared", "folders left", "", Bound::atMost, 0},

    Limit{"releases", "objects released right after a call", "", Bound::none, 0},
    Limit{"releases", "calls that failed", "", Bound::atMost, 0},
    Limit{"releases", "clients that hung", "", Bound::atMost, 0},

    Limit{"engine", "kills of the engine", "", Bound::none, 0},
    Limit{"engine", "runs and starts that failed", "", Bound::none, 0},
    Limit{"engine", "failures without a clear error", "", Bound::atMost, 0},
    Limit{"engine", "next runs that failed or gave different streams", "", Bound::atMost, 0},
    Limit{"engine", "processes left after ten seconds", "", Bound::atMost, 0},
    Limit{"engine", "temporary folders left", "", Bound::atMost, 0},

    Limit{"host", "kills of the host", "", Bound::none, 0},
    Limit{"host", "processes left after ten seconds", "", Bound::atMost, 0},
    Limit{"host", "servers created but never run", "", Bound::none, 0},
    Limit{"host", "next hosts that failed", "", Bound::atMost, 0},
    Limit{"host", "temporary folders of killed hosts", "", Bound::none, 0},
    Limit{"host", "temporary folders left after the next start", "", Bound::atMost, 0},
};

inline constexpr std::array limitsOfModels = {
    Limit{"models", "host: peak memory gained", "KiB", Bound::atMost, 200 * 1024},
};

inline constexpr std::array limitsOfEngine = {
    Limit{"socket", "engine: handles gained", "", Bound::atMost, 0},
    Limit{"socket", "engine: threads gained", "", Bound::atMost, 0},
    Limit{"socket", "engine: memory gained", "KiB", Bound::atMost, 4096},

    // The engine listens to 32 unknown callers at once, with two handles each; the client has a thread, whose
    // stack counts 2 MiB.
    Limit{"strangers", "slow strangers at once", "", Bound::none, 0},
    Limit{"strangers", "clients not served", "", Bound::atMost, 0},
    Limit{"strangers", "longest service", "s", Bound::atMost, 5},
    Limit{"strangers", "engine: most handles gained", "", Bound::atMost, 128},
    Limit{"strangers", "engine: most threads gained", "", Bound::atMost, 2},
    Limit{"strangers", "engine: most memory gained", "KiB", Bound::atMost, 4096},
};

inline constexpr auto limits =
    joined(limitsOfWork, doorLimits("models"), limitsOfModels, doorLimits("bags"), doorLimits("requests10"),
           doorLimits("requests11"), doorLimits("reentry"), doorLimits("cases"), doorLimits("socket", 1),
           limitsOfEngine);

} // namespace solvane::soak
