/// What holds: every row of a soak's table, in its order.
#pragma once

#include "Figures.h"

#include <array>

namespace solvane::soak {

inline constexpr std::array limits = {
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
    Limit{"runs", "engine: threads gained", "", Bound::atMost, 0},
    Limit{"runs", "engine: memory gained", "KiB", Bound::atMost, 256},
    Limit{"runs", "Octave: memory gained a run", "KiB", Bound::atMost, 4},
    Limit{"runs", "temporary files gained", "", Bound::atMost, 0},

    Limit{"together", "runs of eight units at once", "", Bound::none, 0},
    Limit{"together", "failed runs and other streams than alone", "", Bound::atMost, 0},
    Limit{"together", "units whose streams differ", "", Bound::atLeast, 8},
    Limit{"together", "folders left behind", "", Bound::atMost, 0},
    Limit{"together", "engines left after ten seconds", "", Bound::atMost, 0},

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

} // namespace solvane::soak
