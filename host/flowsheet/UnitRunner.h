#pragma once

#include "RunResults.h"
#include "SimulationContext.h"
#include "cases/CaseModel.h"

#include <string>

namespace solvane::host {

/// Runs a case: makes the streams and the unit, hands the unit its model, calculates it in the order of the
/// case's profile, and reads the results. The calling thread is in a single-threaded apartment. False with
/// the host's or the unit's text; `results` then holds the reports as far as the unit still gives them.
bool runCase(const Case& flowsheet, const LogSink& log, RunResults& results, std::string& error);

} // namespace solvane::host
