/// The segments of a soak. Each has a file of its own and its rows in Limits.h.
#pragma once

#include "Effort.h"
#include "Figures.h"

#include <array>

namespace solvane::soak {

void soakCommands(const Effort& effort, const Figures& figures);
void soakRuns(const Effort& effort, const Figures& figures);
void soakTogether(const Effort& effort, const Figures& figures);
void soakShared(const Effort& effort, const Figures& figures);
void soakReleases(const Effort& effort, const Figures& figures);
void soakEngineKills(const Effort& effort, const Figures& figures);
void soakHostKills(const Effort& effort, const Figures& figures);
void soakModels(const Effort& effort, const Figures& figures);
void soakBags(const Effort& effort, const Figures& figures);
void soakRequests10(const Effort& effort, const Figures& figures);
void soakRequests11(const Effort& effort, const Figures& figures);
void soakReentry(const Effort& effort, const Figures& figures);
void soakCases(const Effort& effort, const Figures& figures);
void soakSocket(const Effort& effort, const Figures& figures);
void soakStrangers(const Effort& effort, const Figures& figures);

struct Segment {
    const char* name;
    const char* summary;
    void (*run)(const Effort& effort, const Figures& figures);
};

/// In the order in which they run.
inline constexpr std::array segments = {
    Segment{"commands", "One unit, very many commands: every reply is right, nothing grows", soakCommands},
    Segment{"runs", "One unit, many runs on the real engine: every result is right, nothing grows", soakRuns},
    Segment{"together", "Four processes with two units each at the same time: every stream as if alone",
            soakTogether},
    Segment{"shared", "Four simulators on one Matlab while a fifth dies: no run in another unit's folder",
            soakShared},
    Segment{"releases", "A client of a server that releases its object right after a call: neither hangs",
            soakReleases},
    Segment{"engine", "The engine killed at any moment: a clear error, and the next run works",
            soakEngineKills},
    Segment{"host", "The host killed at any moment: no process and no folder is left", soakHostKills},
    Segment{"models", "Damaged model files and streams", soakModels},
    Segment{"bags", "Damaged models in a host's property bag", soakBags},
    Segment{"requests10", "Arbitrary requests from the gateway, on materials of version 1.0", soakRequests10},
    Segment{"requests11", "The same on materials of version 1.1", soakRequests11},
    Segment{"reentry", "A host that calls its unit from inside the unit's runs", soakReentry},
    Segment{"cases", "Damaged case files of the sample host", soakCases},
    Segment{"socket", "Unknown callers, floods and incomplete messages on the engine's socket", soakSocket},
    Segment{"strangers", "Very many slow unknown callers on the engine's socket: clients are still served",
            soakStrangers},
};

} // namespace solvane::soak
