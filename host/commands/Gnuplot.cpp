#include "Gnuplot.h"

#include "cases/FilePath.h"
#include "com/CapeError.h"
#include "com/Handle.h"
#include "com/Text.h"
#include "com/Wine.h"

#include <array>
#include <chrono>

namespace solvane::host {

namespace {

constexpr std::array linuxPrograms{"/usr/bin/gnuplot", "/usr/local/bin/gnuplot"};

constexpr std::chrono::seconds timeLimit{60};

constexpr char scriptFile[] = "plot.gp";
constexpr char pictureFile[] = "picture";
constexpr char endFile[] = "end"; ///< there when the picture is complete

/// A folder in the temporary one, removed with its files.
class PlotFolder {
public:
    PlotFolder()
        : path(std::filesystem::temp_directory_path() /
               ("SolvanePlot-" + std::to_string(GetCurrentProcessId()))) {
        std::error_code fault;
        std::filesystem::create_directory(path, fault); // a failure shows when the script is written
    }
    ~PlotFolder() {
        std::error_code fault;
        for (const char* file : {scriptFile, pictureFile, endFile, ""})
            std::filesystem::remove(path / file, fault);
    }
    PlotFolder(const PlotFolder&) = delete;
    PlotFolder& operator=(const PlotFolder&) = delete;

    const std::filesystem::path path;
};

/// The files have no folders in the script, since a program of Linux knows no Windows paths.
bool start(const std::filesystem::path& program, const std::filesystem::path& folder, Handle& process,
           std::string& error) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    std::wstring commandLine = L"gnuplot " + widen(scriptFile);
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                        nullptr, folder.c_str(), &startup, &started)) {
        error = pathText(program) + " cannot be started: " +
                narrow(FormatHresultText(HRESULT_FROM_WIN32(GetLastError())), CP_UTF8);
        return false;
    }
    const Handle thread(started.hThread);
    process.reset(started.hProcess);
    return true;
}

/// Of a Linux program under Wine there is no process to wait for, so this looks for its last file.
void waitForEnd(const std::filesystem::path& folder, const Handle& process) {
    std::error_code fault;
    const auto limit = std::chrono::steady_clock::now() + timeLimit;
    while (!std::filesystem::exists(folder / endFile, fault) && std::chrono::steady_clock::now() < limit)
        if (!process)
            Sleep(20);
        else if (WaitForSingleObject(process.get(), 20) != WAIT_TIMEOUT)
            return;
}

} // namespace

bool findGnuplot(std::filesystem::path& program, std::string& error) {
    std::wstring found(32767, L'\0');
    found.resize(
        SearchPathW(nullptr, L"gnuplot", L".exe", static_cast<DWORD>(found.size()), found.data(), nullptr));
    program = found;
    std::error_code fault;
    for (const char* path : linuxPrograms)
        if (program.empty() && isWine() && std::filesystem::exists(filePath(path), fault))
            program = filePath(path);
    if (program.empty())
        error =
            "--plot: gnuplot was not found; install it, from gnuplot.info or on Debian as gnuplot-nox, and "
            "add its folder to PATH";
    return !program.empty();
}

bool runGnuplot(const std::filesystem::path& program, const std::string& script, std::string& picture,
                std::string& error) {
    const PlotFolder folder;
    const std::string whole = std::string("set output '") + pictureFile + "'\n" + script +
                              "unset output\nset print '" + endFile + "'\nprint ''\nunset print\n";
    Handle process;
    if (!writeFile(folder.path / scriptFile, whole, error) || !start(program, folder.path, process, error))
        return false;
    waitForEnd(folder.path, process);
    return readFile(folder.path / pictureFile, picture, error);
}

} // namespace solvane::host
