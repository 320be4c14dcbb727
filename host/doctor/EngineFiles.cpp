#include "Steps.h"

#include "cases/FilePath.h"
#include "runtime/AutomationCall.h"

#include <array>
#include <sstream>
#include <tuple>

namespace solvane::host {

namespace {

/// The gateway's build for each file ending of Matlab's binary functions.
struct GatewayBuild {
    std::wstring_view ending;
    const wchar_t* file;
};
constexpr std::array matlabBuilds{
    GatewayBuild{L"mexw64", L"CapeOpenUnitMex.mexw64-77"},
    GatewayBuild{L"mexw32", L"CapeOpenUnitMex.mexw32-77"},
    GatewayBuild{L"dll", L"CapeOpenUnitMex.dll5"},
};

std::wstring answerOf(const Machine& machine, const wchar_t* command) {
    std::wstring output;
    std::ignore = executeCommand(machine.engine.get(), command, output);
    return output.substr(0, output.find_last_not_of(L"\r\n") + 1);
}

Finding lookAtGatewayForMatlab(const Machine& machine) {
    const std::wstring ending = answerOf(machine, L"disp(mexext)");
    for (const GatewayBuild& build : matlabBuilds)
        if (ending == build.ending) {
            const std::filesystem::path file = machine.unitFolder / build.file;
            std::error_code fault;
            if (std::filesystem::exists(file, fault))
                return {pathText(file.filename()), {}};
            return {pathText(file) + " is missing", filesAgain};
        }
    return {"There is no gateway for this Matlab", "Use Matlab for Windows, 32-bit or 64-bit."};
}

/// The server puts the build for its Octave on the path.
Finding lookAtGatewayForOctave(const Machine& machine) {
    constexpr wchar_t binaryFile[] = L"3";
    if (answerOf(machine, L"disp(exist('CapeOpenUnitMex'))") == binaryFile)
        return {"CapeOpenUnitMex.mex", {}};
    return {"CapeOpenUnitMex.mex is missing below " +
                pathText(machine.engineProgram.parent_path() / "octave"),
            filesAgain};
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
    Finding gateway = machine.isOctave ? lookAtGatewayForOctave(machine) : lookAtGatewayForMatlab(machine);
    if (!gateway.isRight())
        return gateway;
    const std::vector<std::filesystem::path> files = toolboxFiles(machine.unitFolder);
    for (const std::filesystem::path& file : files)
        if (std::error_code fault; !std::filesystem::exists(file, fault))
            return {pathText(file) + " is missing", filesAgain};
    return {gateway.text + " and the " + std::to_string(files.size() - 1) +
                " functions for scripts are there",
            {}};
}

} // namespace solvane::host
