#pragma once

#include "RunResults.h"
#include "channel/ErrorStack.h"

#include <optional>
#include <string>
#include <vector>

namespace solvane::host {

/// The error in the script of the unit that failed, from what the script printed. Nothing if the unit failed
/// otherwise, or if the engine does not print where, as Matlab.
std::optional<ScriptError> findScriptError(const Case& flowsheet, const RunResults& results);

/// The place in the model's file, without a message. The model is null if it is not known.
ScriptError scriptErrorAt(const UnitModel* model, const ErrorPlace& place);

/// Whether the unit reports that its script came to its end, as after any error in it; false if Matlab never
/// ran it, or was lost.
bool hasScriptEnded(const UnitResult& unit);

/// What the script of the unit printed before it ended. Empty if it never ran, or was lost.
std::string printedByScript(const UnitResult& unit);

/// What the engine warns of in a script that ran.
struct ScriptWarning {
    std::string text; ///< without the word "warning"
    std::string remedy;
};

/// In the order in which they are printed. Matlab prints none of them.
std::vector<ScriptWarning> scriptWarnings(const UnitResult& unit);

/// "drum.m:12:5", with the path from the current folder
std::string placeText(const ScriptError& error);

/// "drum.m:12:5: message", as editors and build tools read it.
std::string scriptErrorLine(const ScriptError& error);

} // namespace solvane::host
