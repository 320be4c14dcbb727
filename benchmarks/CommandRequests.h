/// One request of each command that a script can send, on a feed and a product of `commandCompounds`
/// compounds whose materials answer with ready numbers: what is measured is the channel and the unit.
#pragma once

#include <string>
#include <vector>

namespace solvane {

inline constexpr std::size_t commandCompounds = 10;

struct CommandRequest {
    std::string name;
    std::string bytes;
    double goal = 1.5; ///< in times of getUnitName
};

/// In the order of their codes; without the host's log, which an answer need not wait for.
const std::vector<CommandRequest>& commandRequests();

/// Measures each against getUnitName and prints the ratios. False for a missed goal.
bool compareCommands();

} // namespace solvane
