#pragma once

namespace solvane {

/// How the time grows with compounds, phases, parameters and files. Prints the ratios between sizes; false
/// where one grows faster than its goal.
bool compareGrowth();

} // namespace solvane
