#include "Steps.h"

#include "cases/FilePath.h"
#include "com/CapeError.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "engine/OctaveProgram.h"
#include "runtime/AutomationCall.h"

#include <objbase.h>

namespace solvane::host {

namespace {

constexpr wchar_t octaveServer[] = L"OctaveAutomationServer.exe";

constexpr char registerEngine[] =
    "With Matlab: start it as administrator by \"matlab /regserver\". Without: install GNU Octave, and run "
    "\"OctaveAutomationServer /RegServer\" in the unit's folder, from a prompt that runs as administrator.";

/// The program's path without quotes and options.
std::filesystem::path programOf(const std::wstring& command) {
    if (command.starts_with(L'"'))
        return command.substr(1, command.find(L'"', 1) - 1);
    constexpr std::wstring_view ending = L".exe";
    const std::size_t end = toLower(command).find(ending);
    return end == std::wstring::npos ? command : command.substr(0, end + ending.size());
}

std::filesystem::path registeredProgram(const std::wstring& classId) {
    for (const wchar_t* server : {L"\\LocalServer32", L"\\InprocServer32"})
        if (const auto command = readRegistryString(HKEY_CLASSES_ROOT, L"CLSID\\" + classId + server, L""))
            return programOf(*command);
    return {};
}

bool isOctaveServer(const std::filesystem::path& program) {
    return compareNoCase(program.filename().wstring(), octaveServer) == 0;
}

Finding engineFault(const Machine& machine, const std::string& reason) {
    const std::string text = "It does not start: ";
    if (!isOctaveServer(machine.engineProgram))
        return {text + reason, std::string("Start Matlab by hand and check its licence. ") + registerEngine};
    std::vector<engine::OctaveProgram> programs;
    std::wstring error;
    if (!engine::OctaveProgram::find(programs, error))
        return {text + narrow(error, CP_UTF8),
                "Install GNU Octave, or set the path of octave-cli: the help book's "
                "page \"Matlab and Octave\" says where."};
    return {text + reason, std::string("Start octave-cli by hand. ") + filesAgain};
}

/// Reads what a command prints, without the final line end.
bool ask(const Machine& machine, const wchar_t* command, std::string& answer) {
    std::wstring output;
    const bool isExecuted = executeCommand(machine.engine.get(), command, output);
    answer = narrow(output.substr(0, output.find_last_not_of(L"\r\n") + 1), CP_UTF8);
    return isExecuted;
}

} // namespace

Finding lookAtEngineClass(Machine& machine) {
    const auto classId = readRegistryString(HKEY_CLASSES_ROOT, L"Matlab.Application\\CLSID", L"");
    const auto version = readRegistryString(HKEY_CLASSES_ROOT, L"Matlab.Application\\CurVer", L"");
    if (!classId && !version)
        return {"No Matlab.Application is registered", registerEngine};
    if (!classId || !version || FAILED(CLSIDFromString(classId->c_str(), &machine.engineClass)))
        return {std::string("The registration of Matlab.Application is incomplete: its key ") +
                    (version ? "CLSID" : "CurVer") + " is missing or damaged",
                registerEngine};
    machine.engineProgram = registeredProgram(*classId);
    if (machine.engineProgram.empty())
        return {"Matlab.Application refers to the class " + narrow(*classId) + ", which is not registered",
                registerEngine};
    std::error_code fault;
    if (machine.engineProgram.has_parent_path() && !std::filesystem::exists(machine.engineProgram, fault))
        return {"Matlab.Application refers to " + pathText(machine.engineProgram) + ", which does not exist",
                registerEngine};
    return {narrow(*version, CP_UTF8) + ", " + pathText(machine.engineProgram), {}};
}

Finding startEngine(Machine& machine) {
    const HRESULT created =
        CoCreateInstance(machine.engineClass, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                         IID_IDispatch, machine.engine.putVoid());
    if (FAILED(created))
        return engineFault(machine, narrow(FormatHresultText(created), CP_UTF8));
    // One digit, then the version.
    std::string answer;
    const bool hasAnswered = ask(machine, L"disp([int2str(exist('OCTAVE_VERSION')) version])", answer);
    // The server starts even without Octave; then its first command fails.
    if (!hasAnswered && isOctaveServer(machine.engineProgram))
        return engineFault(machine, answer);
    if (!hasAnswered || answer.empty() || answer[0] < '0' || answer[0] > '9')
        return {"It starts, but does not answer: " + answer, "Start it by hand and see what it reports."};
    machine.isOctave = answer[0] != '0';
    // Of several versions, which.
    std::string folder;
    if (!ask(machine, machine.isOctave ? L"disp(OCTAVE_HOME)" : L"disp(matlabroot)", folder))
        return {"It starts, but does not answer: " + folder, "Start it by hand and see what it reports."};
    return {(machine.isOctave ? "GNU Octave " : "Matlab ") + answer.substr(1) + " in " + folder + " answers",
            {}};
}

Finding lookAtEnginePath(Machine& machine) {
    // As the unit does: anything printed is a complaint.
    for (const std::wstring& folder : {machine.unitFolder.wstring(), machine.temporaryFolder}) {
        std::string answer;
        if (!ask(machine, (L"addpath '" + folder + L"'").c_str(), answer) || !answer.empty())
            return {"It cannot reach " + pathText(folder) + ": " + answer,
                    folder.find(L'\'') == std::wstring::npos
                        ? "Check the access rights of that folder and of its parents."
                        : "Matlab accepts no folder with an apostrophe in its name. Set the environment "
                          "variables TMP and TEMP to another folder, or put the unit's files into another "
                          "one and register it there."};
    }
    // A shared Matlab would keep the folder on its path.
    std::string ignored;
    ask(machine, (L"rmpath '" + machine.temporaryFolder + L"'").c_str(), ignored);
    return {"It reaches the unit's folder and the temporary folder", {}};
}

} // namespace solvane::host
