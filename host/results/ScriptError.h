#pragma once

#include "RunResults.h"

#include <optional>
#include <string>

namespace solvane::host {

/// The error that ended a unit's script. Lines and columns are counted from 1.
struct ScriptError {
    std::string
        file; ///< the script's file, or an additional file; "script" for one without a file of its own
    long line = 0;
    long column = 0; ///< 0 if it is not known
    std::string message;
};

/// The error of the case's last unit that was calculated, from what its script printed. Nothing if the unit
/// failed otherwise, or if the engine does not print where, as Matlab.
std::optional<ScriptError> findScriptError(const Case& flowsheet, const RunResults& results);

/// "drum.m:12:5: message", as editors and build tools read it.
std::string scriptErrorLine(const ScriptError& error);

} // namespace solvane::host
