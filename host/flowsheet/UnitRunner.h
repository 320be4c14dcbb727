#pragma once

#include "cases/CaseModel.h"
#include "results/RunResults.h"

#include <functional>
#include <string>
#include <string_view>

namespace solvane::host {

/// Takes a line (UTF-8) that a unit of this name has to say.
using RunLog = std::function<void(std::string_view unit, std::string_view line)>;

/// Runs a case: makes the streams and the units, hands the units their models, calculates one after the other
/// in the order of the case's profile, and reads the results. The calling thread is in a single-threaded
/// apartment. False with the host's or the unit's text; `results` then holds what is known of the units up to
/// the one that failed, the reports of it too as far as it still gives them.
bool runCase(const Case& flowsheet, const RunLog& log, RunResults& results, std::string& error);

} // namespace solvane::host
