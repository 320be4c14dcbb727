// Hosts die at any moment: the processes that they started end too, and the next start removes their folders.

#include "Drum.h"
#include "Folders.h"
#include "Leftovers.h"
#include "Processes.h"
#include "Progress.h"
#include "Roles.h"
#include "Segments.h"

#include <cstdio>
#include <random>

namespace solvane::soak {

namespace {

constexpr double temperature = 255; // K
constexpr DWORD settling = 500;
constexpr DWORD startPatience = 60000;
// From the start to the kill, in milliseconds: a start takes about one second, runs follow.
constexpr int longestLife = 2500;

// Commands and calculation take turns.
constexpr char longScript[] = R"(
stop = time() + 0.2;
while time() < stop, assert(getFeedCount(), 1); end
)";

} // namespace

int playHost(const std::vector<std::wstring>& arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int result = 0;
    {
        const UnitModule module;
        Drum drum(module, 0, longScript);
        std::string error = drum.startError();
        for (int runs = std::stoi(arguments.at(0)); error.empty() && runs > 0; --runs)
            drum.calculate(temperature, error);
        if (!error.empty()) {
            std::printf("  %s\n", error.c_str());
            result = 1;
        }
    }
    CoUninitialize();
    return result;
}

void soakHostKills(const Effort& effort, const Figures& figures) {
    const int kills = effort.of(20, 200);
    const TemporaryFolder temporary;
    std::mt19937 random(effort.seed);
    int leftProcesses = 0, stillborn = 0, nextFailures = 0;
    std::size_t leftFolders = 0, foldersOfTheDead = 0;
    Progress progress("kills of the host", kills);
    for (int i = 0; i < kills; ++i) {
        const std::wstring mark =
            L"host-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(i);
        markDescendants(mark);
        const Handle host = startSelf({roleOption, L"host", L"1000"});
        const DWORD process = GetProcessId(host.get());
        Sleep(static_cast<DWORD>(std::uniform_int_distribution(0, longestLife)(random)));
        killProcess(process);
        // A server that was just being created may appear only now.
        Sleep(settling);
        comesTrue([&] { return engineServersOf(process).empty() && octavesWith(mark).empty(); });
        for (const DWORD server : engineServersOf(process)) {
            const bool isStillborn = hasNeverRun(server);
            ++(isStillborn ? stillborn : leftProcesses);
            std::printf("  the server %lu of host %d is left%s\n", server, i,
                        isStillborn ? ", and never ran" : "");
            killProcess(server);
        }
        leftProcesses += static_cast<int>(octavesWith(mark).size());
        foldersOfTheDead += workingFoldersIn(temporary.path());

        markDescendants(mark + L"-next");
        const Handle next = startSelf({roleOption, L"host", L"1"});
        if (WaitForSingleObject(next.get(), startPatience) == WAIT_TIMEOUT)
            killProcess(GetProcessId(next.get()));
        DWORD code = 1;
        GetExitCodeProcess(next.get(), &code);
        if (code != 0) {
            ++nextFailures;
            std::printf("  the host after kill %d ended with code %lu\n", i, code);
        }
        leftFolders += workingFoldersIn(temporary.path());
        progress.at(i + 1);
    }
    figures.put("kills of the host", kills);
    figures.put("processes left after ten seconds", leftProcesses);
    figures.put("servers created but never run", stillborn);
    figures.put("next hosts that failed", nextFailures);
    figures.put("temporary folders of killed hosts", double(foldersOfTheDead));
    figures.put("temporary folders left after the next start", double(leftFolders));
}

} // namespace solvane::soak
