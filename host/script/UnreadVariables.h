/// The variables that a script sets and never reads.
#pragma once

#include "ScriptFinding.h"
#include "ScriptScopes.h"

#include <vector>

namespace solvane::host {

/// Those whose name is surely a slip of another one.
std::vector<ScriptFinding> mistypedVariables(const std::vector<ScriptFile>& files);

/// The others, which may be left over, but no results among several of one call.
std::vector<ScriptFinding> unreadVariables(const UnitModel& model);

} // namespace solvane::host
