#pragma once

#include "flowsheet/RunWatch.h"
#include "studies/Adjustment.h"

#include <string>

namespace solvane::host {

/// Runs the case again and again until an output has its target, prints a line for each run, and leaves the
/// results of the last one. False with a text.
[[nodiscard]] bool runToTarget(const Case& flowsheet, const Adjustment& adjustment, RunResults& results,
                               std::string& error, RunWatch& watch);

} // namespace solvane::host
