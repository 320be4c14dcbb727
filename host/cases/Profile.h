/// How a host calls a unit and how its materials behave: the habits of real hosts.
#pragma once

#include "materials/MaterialHabits.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace solvane::host {

enum class StartupStep { context, load, initialize };

/// What a host calls during the unit's Calculate.
enum class ReentrantCall { look, validate, save, calculate, terminate, release };

struct Profile {
    std::string_view name;
    std::string_view summary;
    std::array<StartupStep, 3> startup; ///< after the creation
    bool reconnects;                    ///< disconnects and connects all ports around every call
    bool calculatesOnWorker;            ///< on a thread of the multi-threaded apartment, through proxies
    bool terminates;                    ///< calls Terminate before it releases the unit
    MaterialRules materials{};
    std::span<const ReentrantCall> reentrantCalls{}; ///< in the first material call
    bool reentersWhilePainting = false;              ///< additionally, or instead if that comes first
};

using enum StartupStep;

inline constexpr std::array harmlessCalls{ReentrantCall::look, ReentrantCall::validate, ReentrantCall::save,
                                          ReentrantCall::calculate};
inline constexpr std::array terminateCall{ReentrantCall::terminate};
inline constexpr std::array releaseCall{ReentrantCall::release};

/// The first is the default.
inline constexpr std::array profiles{
    Profile{.name = "standard",
            .summary = "the order of the standard: context, load, Initialize",
            .startup = {context, load, initialize},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = true},
    Profile{.name = "ui-thread-and-worker",
            .summary =
                "created on a thread with a message loop, calculated from a worker thread through proxies",
            .startup = {initialize, context, load},
            .reconnects = false,
            .calculatesOnWorker = true,
            .terminates = true},
    Profile{.name = "early",
            .summary = "loads before it sets a context, and never calls Terminate",
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
    Profile{.name = "strict",
            .summary =
                "materials reject absent phases, bases other than \"mole\", fractions that do not sum to 1",
            .startup = {context, load, initialize},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = true,
            .materials = {.strict = true}},
    Profile{.name = "liquid-first",
            .summary = "materials list their liquid before their vapour",
            .startup = {context, load, initialize},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = true,
            .materials = {.liquidFirst = true}},
    Profile{.name = "reentrant",
            .summary = "reads, validates, saves and calculates the unit during its calculation",
            .startup = {context, load, initialize},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = true,
            .reentrantCalls = harmlessCalls,
            .reentersWhilePainting = true},
    Profile{.name = "reentrant-terminate",
            .summary = "calls Terminate during a material call; the calculation then fails",
            .startup = {context, load, initialize},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = true,
            .reentrantCalls = terminateCall},
    Profile{.name = "reentrant-release",
            .summary =
                "releases the unit while painting during its calculation, and then reads nothing from it",
            .startup = {context, load, initialize},
            .reconnects = false,
            .calculatesOnWorker = false,
            .terminates = true,
            .reentrantCalls = releaseCall,
            .reentersWhilePainting = true},
};

/// Null for an unknown name.
constexpr const Profile* findProfile(std::string_view name) {
    const auto found = std::ranges::find(profiles, name, &Profile::name);
    return found == profiles.end() ? nullptr : &*found;
}

} // namespace solvane::host
