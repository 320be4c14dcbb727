#include "OctaveProgram.h"

#include "OctaveInstallations.h"
#include "OctaveText.h"
#include "WinePaths.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "com/Wine.h"

#include <array>

namespace solvane::engine {

namespace {

constexpr wchar_t programVariable[] = L"SOLVANE_OCTAVE";
constexpr wchar_t settingsKey[] = L"Software\\SolvaneUO";
constexpr wchar_t programValue[] = L"OctaveProgram";

constexpr std::array linuxPrograms = {L"/usr/bin/octave-cli", L"/usr/local/bin/octave-cli"};

bool isFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

struct SetProgram {
    std::wstring path;
    std::wstring place; // where it is set
};

SetProgram programThatWasSet() {
    std::wstring fromEnvironment = expandVariables(L"%" + std::wstring(programVariable) + L"%");
    if (!fromEnvironment.starts_with(L'%'))
        return {fromEnvironment, std::wstring(L"the environment variable ") + programVariable};
    const std::array roots = {std::pair(HKEY_CURRENT_USER, L"HKEY_CURRENT_USER\\"),
                              std::pair(HKEY_LOCAL_MACHINE, L"HKEY_LOCAL_MACHINE\\")};
    for (const auto& [root, name] : roots)
        if (const auto value = readRegistryString(root, settingsKey, programValue))
            return {*value, std::wstring(programValue) + L" of " + name + settingsKey};
    return {};
}

} // namespace

bool OctaveProgram::find(std::vector<OctaveProgram>& programs, std::wstring& error) {
    programs.clear();
    const SetProgram set = programThatWasSet();
    if (!set.path.empty()) {
        programs.push_back(OctaveProgram(set.path));
        if (isFile(programs.front().filePath()))
            return true;
        error = L"There is no file " + set.path + L", the path of Octave in " + set.place;
        return false;
    }
    for (const std::wstring& path : installedOctaves())
        programs.push_back(OctaveProgram(path));
    if (isWine())
        for (const wchar_t* path : linuxPrograms)
            if (isFile(windowsPath(path)))
                programs.push_back(OctaveProgram(path));
    if (!programs.empty())
        return true;
    error = L"Octave was not found; install GNU Octave, or set the environment variable SOLVANE_OCTAVE, or "
            L"OctaveProgram in HKEY_CURRENT_USER\\Software\\SolvaneUO, to the path of octave-cli";
    return false;
}

std::wstring OctaveProgram::filePath() const {
    return isLinux() ? windowsPath(path_) : path_;
}

std::wstring OctaveProgram::commandLine(const std::wstring& engineFolder) const {
    const std::wstring options =
        L"\"" + path_ + L"\" --no-init-file --no-site-file --no-history --no-line-editing --no-gui --quiet";
    if (!isLinux())
        return options + L" --path \"" + engineFolder + L"\" --eval solvaneEngine";
    // Wine's link of a drive has a colon in its name, which separates folders in Octave's path; its target
    // has none.
    return options + L" --eval \"addpath (canonicalize_file_name ('" + octaveText(unixPath(engineFolder)) +
           L"')); solvaneEngine\"";
}

bool OctaveProgram::start(const std::wstring& engineFolder, const std::wstring& folder, Handle& process,
                          std::wstring& error) const {
    SECURITY_ATTRIBUTES inherited{};
    inherited.nLength = sizeof inherited;
    inherited.bInheritHandle = TRUE;
    const std::wstring nothing = isLinux() ? windowsPath(L"/dev/null") : L"NUL";
    const FileHandle stream(CreateFileW(nothing.c_str(), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING, 0,
                                        nullptr));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = startup.hStdOutput = startup.hStdError = stream.get();

    std::wstring command = commandLine(engineFolder);
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(filePath().c_str(), command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                        folder.c_str(), &startup, &started)) {
        error = L"Could not start " + path_ + L" (error " + std::to_wstring(GetLastError()) +
                L"); start it by hand to see why";
        return false;
    }
    const Handle thread(started.hThread);
    process.reset(started.hProcess);
    return true;
}

} // namespace solvane::engine
