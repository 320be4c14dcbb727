#pragma once

namespace solvane {

/// From nothing to the end of a first run, against an engine of one's own that is started and runs the same
/// commands. Prints the figures; false where a goal is missed, or where there is no engine.
bool compareFirstRun();

/// A run of the sample host as a process of its own, with the engine's start in it. Prints the time and its
/// parts; false where it takes too long, or fails.
bool measureColdStart();

} // namespace solvane
