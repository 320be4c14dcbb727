#pragma once

namespace solvane {

/// The unit's window, opened and closed, against a bare dialog with as many plain controls. Prints the
/// figures; false where the goal is missed.
bool compareWindow();

} // namespace solvane
