/// Octave's process and the programs that its scripts start.
#pragma once

namespace solvane::engine {

/// Makes this process the head of a group that the programs started later belong to.
void formProcessGroup();

/// Ends the group at once, this process included.
[[noreturn]] void endProcessGroup();

} // namespace solvane::engine
