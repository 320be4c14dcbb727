/// The names of what a unit in a run shares with its gateway. The block of memory itself bears the unit's id.
#pragma once

#include <string>

namespace solvane {

/// The event that the gateway sets when its request stands in the block.
inline std::string requestEventName(const std::string& unitId) {
    return unitId + "_in";
}
/// The event that the unit sets when its reply stands there.
inline std::string replyEventName(const std::string& unitId) {
    return unitId + "_out";
}
/// The mutex of whoever talks to the unit: one at a time.
inline std::string claimName(const std::string& unitId) {
    return unitId + "_gateway";
}

} // namespace solvane
