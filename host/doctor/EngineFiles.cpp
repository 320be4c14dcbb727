#include "Steps.h"

#include "cases/FilePath.h"
#include "com/Text.h"
#include "runtime/AutomationCall.h"

#include <array>
#include <sstream>

namespace solvane::host {

namespace {

/// The gateway's build for each ending that an engine gives its binary functions. Octave finds its own beside
/// the server.
struct GatewayBuild {
    std::wstring_view ending;
    const wchar_t* file;
};
constexpr std::array matlabBuilds{
    GatewayBuild{L"mexw64", L"CapeOpenUnitMex.mexw64-77"},
    GatewayBuild{L"mexw32", L"CapeOpenUnitMex.mexw32-77"},
    GatewayBuild{L"dll", L"CapeOpenUnitMex.dll5"},
};
constexpr std::array octaveFolders{L"octave\\windows", L"octave\\linux"};

std::wstring answerOf(const Machine& machine, const wchar_t* command) {
    std::wstring output;
    executeCommand(machine.engine.get(), command, output);
    return output.substr(0, output.find_last_not_of(L"\r\n") + 1);
}

std::filesystem::path gatewayFor(const Machine& machine) {
    if (machine.isOctave)
        return machine.engineProgram.parent_path() /
               octaveFolders[answerOf(machine, L"disp(ispc())") == L"1" ? 0 : 1] / L"CapeOpenUnitMex.mex";
    const std::wstring ending = answerOf(machine, L"disp(mexext)");
    for (const GatewayBuild& build : matlabBuilds)
        if (ending == build.ending)
            return machine.unitFolder / build.file;
    return {};
}

/// The contents of the toolbox, and the files that they name.
std::vector<std::filesystem::path> toolboxFiles(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files{folder / L"Contents.m"};
    std::string contents, ignored;
    readFile(files.front(), contents, ignored);
    std::istringstream lines(contents);
    for (std::string line; std::getline(lines, line);) {
        std::string percent, name, dash;
        if (std::istringstream(line) >> percent >> name >> dash && percent == "%" && dash == "-")
            files.push_back(folder / (name + ".m"));
    }
    return files;
}

} // namespace

Finding lookAtEngineFiles(Machine& machine) {
    std::vector<std::filesystem::path> files = toolboxFiles(machine.unitFolder);
    const std::filesystem::path gateway = gatewayFor(machine);
    if (gateway.empty())
        return {"There is no gateway for this Matlab", "Use Matlab for Windows, of 32 or 64 bits."};
    files.push_back(gateway);
    for (const std::filesystem::path& file : files)
        if (std::error_code fault; !std::filesystem::exists(file, fault))
            return {pathText(file) + " is missing", filesAgain};
    return {pathText(gateway.filename()) + " and the " + std::to_string(files.size() - 2) +
                " functions of scripts are there",
            {}};
}

} // namespace solvane::host
