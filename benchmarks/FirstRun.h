#pragma once

namespace solvane {

/// From nothing to the end of a first run, against an engine of one's own that is started and runs the same
/// commands. Prints the figures; false where a goal is missed, or where there is no engine.
bool compareFirstRun();

} // namespace solvane
