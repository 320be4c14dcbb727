/// What is surely a mistake in a script, although it may run.
#pragma once

#include "ScriptFinding.h"
#include "cases/CaseModel.h"

#include <vector>

namespace solvane::host {

std::vector<ScriptFinding> scriptMistakes(const UnitModel& model);

} // namespace solvane::host
