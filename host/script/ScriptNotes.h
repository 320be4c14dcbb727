/// What a script says that is no mistake, but works in some places only.
#pragma once

#include "ScriptFinding.h"
#include "cases/CaseModel.h"

#include <vector>

namespace solvane::host {

/// What Octave understands in the script and the additional files, and Matlab does not. Each once a file.
std::vector<ScriptFinding> octaveOnly(const UnitModel& model);

/// Globals that nothing sets anew in each run, since Octave keeps them from run to run, and persistent
/// variables that change from call to call.
std::vector<ScriptFinding> keptVariables(const UnitModel& model);

} // namespace solvane::host
