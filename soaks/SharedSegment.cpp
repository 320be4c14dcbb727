// Simulators that share one Matlab, some of which die: no run strays into another unit's folder.

#include "Folders.h"
#include "LateBound.h"
#include "Leftovers.h"
#include "MatlabRegistration.h"
#include "Processes.h"
#include "Progress.h"
#include "ScriptedMatlab.h"
#include "Segments.h"

#include <random>

namespace solvane::soak {

namespace {

constexpr int simulators = 4;
constexpr int runsOfASimulator = 50;
constexpr wchar_t simulatorProgram[] = L"SharedMatlab.exe";
// From the start of the simulator that dies to its kill, in milliseconds: its first run comes after about one
// second.
constexpr int longestLife = 4000;

std::vector<Handle> startSimulators() {
    std::vector<Handle> running;
    for (int i = 0; i < simulators; ++i)
        running.push_back(startBeside(
            simulatorProgram, {L"simulator" + std::to_wstring(i), std::to_wstring(runsOfASimulator)}));
    return running;
}

void killOneMore(std::mt19937& random) {
    const Handle victim = startBeside(simulatorProgram, {L"victim", L"1000000"});
    Sleep(static_cast<DWORD>(std::uniform_int_distribution(0, longestLife)(random)));
    killProcess(GetProcessId(victim.get()));
}

/// Whether Matlab's current folder exists.
bool isMatlabSomewhere(IDispatch* application) {
    const Variant command(std::wstring_view(L"pwd"));
    const auto printed = LateBound(application).call(L"Execute", DISPATCH_METHOD, {command.get()});
    return GetFileAttributesW(std::wstring(printed.value.text()).c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace

void soakShared(const Effort& effort, const Figures& figures) {
    const int rounds = effort.of(6, 100);
    const TemporaryFolder temporary;
    MatlabRegistration registration;
    registration.setSharedServer();
    ComRef<IDispatch> application; // keeps it through all rounds
    CoCreateInstance(scriptedMatlabClass, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, application.putVoid());
    if (!application)
        return;
    std::mt19937 random(effort.seed);
    Progress progress("rounds of four simulators", rounds);
    double astray = 0;
    int lost = 0;
    for (int round = 1; round <= rounds; ++round) {
        const std::vector<Handle> running = startSimulators();
        if (round < rounds) // the starts of the last round remove what is left
            killOneMore(random);
        for (const Handle& simulator : running) {
            DWORD count = runsOfASimulator;
            WaitForSingleObject(simulator.get(), INFINITE);
            GetExitCodeProcess(simulator.get(), &count);
            astray += count;
        }
        lost += isMatlabSomewhere(application.get()) ? 0 : 1;
        progress.at(round);
    }
    figures.put("runs of four simulators on one Matlab", double(rounds) * simulators * runsOfASimulator);
    figures.put("runs that failed or ran in another unit's folder", astray);
    figures.put("rounds after which Matlab's folder is missing", lost);
    figures.put("simulators killed meanwhile", rounds - 1);
    figures.put("folders left", double(workingFoldersIn(temporary.path())));
}

} // namespace solvane::soak
