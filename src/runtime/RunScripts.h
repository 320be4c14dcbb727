/// The two scripts that are generated in the working folder: unitCalc.m and initRun.m.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace solvane {

class CSolvaneUnitOp;
struct CalculationRun;

using ScriptFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Builds unitCalc.m, a function whose body is the user's calc.m.
bool writeUnitScript(const CSolvaneUnitOp& unit, std::wstring& error);

/// Opens initRun.m and writes what does not depend on a material. Null on failure.
ScriptFile openInitScript(const CSolvaneUnitOp& unit, std::wstring& error);

/// Writes the run's compounds and phases. No quote in a name is escaped.
void writeCompoundsAndPhases(std::FILE* initScript, const CalculationRun& run);

} // namespace solvane
