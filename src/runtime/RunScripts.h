/// The two scripts that are generated in the working folder: unitCalc.m and initRun.m.
#pragma once

#include "com/StdioFile.h"

#include <string>

namespace solvane {

class Unit;
struct CalculationRun;

/// Lines of unitCalc.m before the first one of the user's script.
inline constexpr int unitScriptHeaderLines = 2;

/// Builds unitCalc.m, a function whose body is the user's calc.m.
[[nodiscard]] bool writeUnitScript(const Unit& unit, std::wstring& error);

/// Opens initRun.m and writes the part that does not depend on a material. Null on failure.
StdioFile openInitScript(const Unit& unit, std::wstring& error);

/// Writes the run's compounds and phases and closes the file. Does not escape quotes in names.
[[nodiscard]] bool finishInitScript(StdioFile file, const CalculationRun& run, std::wstring& error);

} // namespace solvane
