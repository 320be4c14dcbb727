/// In which order a host calls a unit: the habits of real hosts.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace solvane::host {

enum class StartupStep { context, load, initialize };

struct Profile {
    std::string_view name;
    std::string_view summary;
    std::array<StartupStep, 3> startup; ///< what follows the creation
    bool reconnects;                    ///< disconnects and connects all ports around every call
    bool calculatesOnWorker;            ///< on a thread of the multi-threaded apartment, through proxies
    bool terminates;                    ///< calls Terminate before it releases the unit
};

using enum StartupStep;

/// The first is what a case has that names none.
inline constexpr std::array profiles{
    Profile{.name = "standard",
            .summary = "the standard's own order: context, load, Initialize",
            .startup = {context, load, initialize},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = true},
    Profile{.name = "ui-thread-and-worker",
            .summary =
                "made on a thread with a message loop, calculated from a worker thread through proxies",
            .startup = {initialize, context, load},
            .reconnects = false,
            .calculatesOnWorker = true,
            .terminates = true},
    Profile{.name = "early",
            .summary = "loads before it gives a context, and never calls Terminate",
            .startup = {load, initialize, context},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = false},
    Profile{.name = "reconnecting",
            .summary = "disconnects and connects all ports around every call",
            .startup = {initialize, context, load},
            .reconnects = true,
            .calculatesOnWorker = false,
            .terminates = true},
};

/// Null where there is none of that name.
constexpr const Profile* findProfile(std::string_view name) {
    const auto found = std::ranges::find(profiles, name, &Profile::name);
    return found == profiles.end() ? nullptr : &*found;
}

} // namespace solvane::host
