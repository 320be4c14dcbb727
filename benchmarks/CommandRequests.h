/// One request of each command that a script can send.
#pragma once

#include <string>
#include <vector>

namespace solvane {

inline constexpr std::size_t commandCompounds = 10;

struct CommandRequest {
    std::string name;
    std::string bytes;
    double goal = 1.25; ///< in times of a ping-pong, with a host that answers at once
};

/// In the order of their codes, for materials of that many compounds; without the host's log, which an answer
/// need not wait for.
std::vector<CommandRequest> commandRequests(std::size_t compounds = commandCompounds);

/// Measures each against a ping-pong and prints the ratios. False for a missed goal.
bool compareCommands();

} // namespace solvane
