#include "FirstRun.h"

#include "Engine.h"
#include "Folders.h"
#include "HostedUnit.h"
#include "Verdict.h"

#include <cstdio>
#include <optional>

namespace solvane {

bool compareFirstRun() {
    constexpr int turns = 8;
    const UnitModule module;
    ModelBag bag;
    bag.script("");
    const TemporaryFolder temporary;
    const HostedUnit other(module); // the owner of the folder for the bare commands
    bool isDone = SUCCEEDED(other.load(bag)) && SUCCEEDED(other.calculate());
    const std::wstring folder = workingFolderIn(temporary.path());

    std::vector<double> creations, firstRuns, starts, bareRuns;
    for (int turn = 0; turn <= turns && isDone; ++turn) {
        std::optional<HostedUnit> unit;
        const double creation = microseconds([&] { unit.emplace(module); });
        const double run =
            microseconds([&] { isDone &= SUCCEEDED(unit->load(bag)) && SUCCEEDED(unit->calculate()); });
        unit.reset();
        std::optional<Engine> engine;
        const double start = microseconds([&] { engine.emplace(); });
        const double bareRun = microseconds([&] {
            addPaths(*engine, folder);
            isDone &= runBare(*engine, folder);
        });
        if (turn == 0) // warms up
            continue;
        creations.push_back(creation);
        firstRuns.push_back(creation + run);
        starts.push_back(start);
        bareRuns.push_back(start + bareRun);
    }
    if (!isDone) {
        std::printf("  no run on the real engine\n");
        return false;
    }
    bool isMet = printAtMost("unit created / engine created", {creations, starts}, 1.2);
    isMet &= printAtMost("created and first run / the same bare", {firstRuns, bareRuns}, 1.2);
    return isMet;
}

} // namespace solvane
