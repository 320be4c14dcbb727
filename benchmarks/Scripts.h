#pragma once

namespace solvane {

/// Calculates a unit with scripts of several sizes on the real engine, against the bare commands of the same
/// runs, and prints how much longer it takes. False for a missed goal, or where there is no engine.
bool compareScripts();

} // namespace solvane
