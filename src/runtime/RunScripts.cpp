#include "RunScripts.h"

#include "com/Failure.h"
#include "com/Text.h"
#include "thermo/CalculationRun.h"
#include "thermo/HostTexts.h"
#include "unit/model/Unit.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace solvane {

namespace {

constexpr char unitScriptHeader[] = "function unitCalc\n"
                                    "global nComp nPhase compNames phaseNames phaseAggregationStates "
                                    "AGGSTATE_UNKNOWN AGGSTATE_VAPOR AGGSTATE_LIQUID AGGSTATE_SOLID\n";
static_assert(std::ranges::count(unitScriptHeader, '\n') == unitScriptHeaderLines);

constexpr char runScriptWriting[] = "Failed to open run script for writing: ";
constexpr char runScriptReading[] = "Failed to open run script for reading: ";
constexpr char initScriptWriting[] = "Failed to open initialization file for writing: ";

/// `failure` and the system's text for errno.
std::wstring withSystemsText(const char* failure) {
    return widen(std::string(failure) + std::strerror(errno));
}

/// Null on failure.
StdioFile openToWrite(const Unit& unit, const char* fileName, const char* failure, std::wstring& error) {
    StdioFile file = overwriteFile(unit.workingFolder.pathOf(fileName), "t");
    if (!file)
        error = withSystemsText(failure);
    return file;
}

void writeNames(std::FILE* file, const std::vector<std::string>& names) {
    const char* separator = "";
    for (const std::string& name : names) {
        std::fprintf(file, "%s'%s'", separator, name.c_str());
        separator = " ";
    }
}

} // namespace

bool writeUnitScript(const Unit& unit, std::wstring& error) {
    StdioFile target = openToWrite(unit, "unitCalc.m", runScriptWriting, error);
    if (!target)
        return false;
    const StdioFile source = openFile(unit.workingFolder.pathOf(userScriptName), "r");
    if (!source)
        return fail(error, withSystemsText(runScriptReading));
    std::fputs(unitScriptHeader, target.get());
    std::array<char, 1024> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), source.get()))
        std::fwrite(block.data(), 1, count, target.get());
    if (std::ferror(source.get()))
        return fail(error, withSystemsText(runScriptReading));
    // Half a script might run, with wrong results.
    return closeOverwritten(std::move(target)) || fail(error, withSystemsText(runScriptWriting));
}

StdioFile openInitScript(const Unit& unit, std::wstring& error) {
    StdioFile file = openToWrite(unit, "initRun.m", initScriptWriting, error);
    if (file)
        std::fprintf(file.get(), "setEchoOnValue=%i;\nunit_ID='%s';\n", static_cast<int>(unit.echoLevel),
                     unit.unitId.c_str());
    return file;
}

bool finishInitScript(StdioFile file, const CalculationRun& run, std::wstring& error) {
    std::FILE* initScript = file.get();
    std::vector<std::string> compounds;
    for (const std::wstring& compound : run.compoundIds.texts())
        compounds.push_back(scriptText(compound));
    std::fprintf(initScript, "nComp=%d;\ncompNames={", static_cast<int>(run.nComp));
    writeNames(initScript, compounds);
    std::fprintf(initScript, "};\nnPhase=%d;\nphaseNames={", static_cast<int>(run.phaseNames.size()));
    writeNames(initScript, run.phaseNames);
    std::fputs("};\nphaseAggregationStates=[", initScript);
    const char* separator = "";
    for (const std::int32_t code : run.aggregationCodes) {
        std::fprintf(initScript, "%s%d", separator, static_cast<int>(code));
        separator = ",";
    }
    std::fputs("];\n", initScript);
    return closeOverwritten(std::move(file)) || fail(error, withSystemsText(initScriptWriting));
}

} // namespace solvane
