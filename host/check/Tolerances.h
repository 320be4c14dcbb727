/// The tolerances that a script gives to its solvers.
#pragma once

#include "cases/CaseModel.h"

#include <string>
#include <vector>

namespace solvane::host {

/// The loose ones in the script and the additional files, such as "model.m:7: TolX is 1e-2". A solver that
/// stops so early errs by about as much on every run, which no small change of a feed shows.
std::vector<std::string> looseTolerances(const UnitModel& model);

} // namespace solvane::host
