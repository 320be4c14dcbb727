#include "Processes.h"

#include "com/Text.h"

#include <tlhelp32.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace solvane::soak {

namespace {

constexpr wchar_t markVariable[] = L"SOLVANE_SOAK";
constexpr wchar_t serverProgram[] = L"OctaveAutomationServer.exe";
constexpr DWORD endPatience = 10000;

/// As much as can be read: a process may end meanwhile.
std::string linuxFile(const std::string& path) {
    std::ostringstream contents;
    contents << std::ifstream("Z:" + path, std::ios::binary).rdbuf();
    return std::move(contents).str();
}

std::string placeOf(unsigned process) {
    return "/proc/" + std::to_string(process);
}

std::wstring ownFile() {
    std::wstring file(1024, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size())));
    return file;
}

Handle start(std::wstring program, std::wstring line) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
        return {};
    const Handle thread(process.hThread);
    return Handle(process.hProcess);
}

} // namespace

void markDescendants(const std::wstring& mark) {
    SetEnvironmentVariableW(markVariable, mark.c_str());
}

std::vector<DWORD> engineServersOf(DWORD client) {
    std::vector<DWORD> servers;
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        if (entry.th32ParentProcessID == client && compareNoCase(entry.szExeFile, serverProgram) == 0)
            servers.push_back(entry.th32ProcessID);
    return servers;
}

std::vector<unsigned> octavesWith(const std::wstring& mark) {
    const std::string variable = narrow(markVariable) + "=" + narrow(mark);
    std::vector<unsigned> octaves;
    std::error_code gone;
    for (const auto& entry : std::filesystem::directory_iterator("Z:/proc", gone)) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const auto process = static_cast<unsigned>(std::stoul(name));
        if (linuxFile(placeOf(process) + "/cmdline").find("octave") == std::string::npos)
            continue;
        // Variables end in NUL, so that a mark does not match the beginning of a longer one.
        const std::string environment = '\0' + linuxFile(placeOf(process) + "/environ");
        if (environment.find('\0' + variable + '\0') != std::string::npos)
            octaves.push_back(process);
    }
    return octaves;
}

bool hasNeverRun(DWORD process) {
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int threads = 0, suspended = 0;
    for (BOOL more = Thread32First(snapshot.get(), &entry); more;
         more = Thread32Next(snapshot.get(), &entry)) {
        if (entry.th32OwnerProcessID != process)
            continue;
        ++threads;
        const Handle thread(OpenThread(THREAD_SUSPEND_RESUME, FALSE, entry.th32ThreadID));
        const DWORD count = SuspendThread(thread.get());
        if (count == static_cast<DWORD>(-1))
            continue;
        suspended += count > 0 ? 1 : 0;
        ResumeThread(thread.get());
    }
    return threads == 1 && suspended == 1;
}

void killProcess(DWORD process) {
    const Handle victim(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process));
    TerminateProcess(victim.get(), 1);
    WaitForSingleObject(victim.get(), endPatience);
}

void killOctave(unsigned process) {
    // Wine cannot end a Linux program, but can start one that does.
    start(L"Z:\\bin\\sh", L"sh -c \"kill -9 " + std::to_wstring(process) + L"\"");
    for (DWORD waited = 0; waited < endPatience && !linuxFile(placeOf(process) + "/cmdline").empty();
         ++waited)
        Sleep(1);
}

double memoryOf(unsigned octave) {
    // The sixth number is the pages of data and stack.
    constexpr double page = 4096;
    double pages = 0;
    std::ifstream numbers("Z:" + placeOf(octave) + "/statm");
    for (int i = 0; i < 6; ++i)
        numbers >> pages;
    return pages * page;
}

Handle startBeside(const std::wstring& file, const std::vector<std::wstring>& arguments) {
    const std::wstring self = ownFile();
    const std::wstring program = self.substr(0, self.rfind(L'\\') + 1) + file;
    std::wstring line = L"\"" + program + L"\"";
    for (const std::wstring& argument : arguments)
        line += L" \"" + argument + L"\"";
    return start(program, line);
}

Handle startSelf(const std::vector<std::wstring>& arguments) {
    const std::wstring self = ownFile();
    return startBeside(self.substr(self.rfind(L'\\') + 1), arguments);
}

} // namespace solvane::soak
