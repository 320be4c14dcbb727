/// Words of other languages in a script, such as If, Dim, elif and None.
#pragma once

#include "ScriptFinding.h"
#include "ScriptScopes.h"

#include <vector>

namespace solvane::host {

/// Each kind once a file. A name that the model defines is none, whatever it is elsewhere.
std::vector<ScriptFinding> foreignWords(const std::vector<ScriptFile>& files);

} // namespace solvane::host
