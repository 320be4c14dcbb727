#pragma once

namespace solvane {

/// The unit's own time for a command: from the request in the block to the reply in the block, less the
/// host's calls, beside a bare copy of the same bytes. True if every command is within its goal.
bool compareOwnTimes();

} // namespace solvane
