#pragma once

#include "cases/CaseModel.h"
#include "results/RunResults.h"

#include <functional>
#include <string>
#include <string_view>

namespace solvane::host {

/// Receives a log line (UTF-8) of the named unit.
using RunLog = std::function<void(std::string_view unit, std::string_view line)>;

/// Runs a case: creates the streams and the units, loads the units' models, calculates one unit after the
/// other in the way of the case's profile, and reads the results. The calling thread is in a single-threaded
/// apartment. False with the host's or the unit's text; `results` then holds what is known of the units up to
/// the failed one, including its reports if it still returns them.
bool runCase(const Case& flowsheet, const RunLog& log, RunResults& results, std::string& error);

} // namespace solvane::host
