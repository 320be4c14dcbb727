#pragma once

#include "RunResults.h"

#include <optional>
#include <string>

namespace solvane::host {

/// The error in the script of the unit that failed, from what the script printed. Nothing if the unit failed
/// otherwise, or if the engine does not print where, as Matlab.
std::optional<ScriptError> findScriptError(const Case& flowsheet, const RunResults& results);

/// "drum.m:12:5: message", as editors and build tools read it.
std::string scriptErrorLine(const ScriptError& error);

} // namespace solvane::host
