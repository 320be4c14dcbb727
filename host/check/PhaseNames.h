/// The names of phases that a script looks for.
#pragma once

#include "CheckOutcome.h"
#include "cases/CaseModel.h"

#include <span>
#include <string>
#include <vector>

namespace solvane::host {

/// The names that the script and the additional files compare with phases, which are nearly those of the
/// package's phases: no phase ever equals them, and no run shows why. A name that a comparison tries beside a
/// right one is meant for other packages.
std::vector<CheckFinding> wrongPhaseNames(const UnitModel& model, std::span<const std::string> phases);

} // namespace solvane::host
