#pragma once

namespace solvane {

/// Flashes of the sample host's property package beside the same ones by the textbook. Prints ratios; false
/// where one misses its goal, or where the two disagree.
bool compareFlashes();

} // namespace solvane
