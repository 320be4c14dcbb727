#pragma once

namespace solvane {

/// Calculates a unit with an empty script on the real engine, against the bare commands of the same run, and
/// prints how much longer it takes. False for a missed goal, or where there is no engine.
bool compareEmptyScript();

} // namespace solvane
