#include "FirstRun.h"

#include "Engine.h"
#include "Folders.h"
#include "HostedUnit.h"
#include "Program.h"
#include "Verdict.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <span>
#include <string>

namespace solvane {

namespace {

constexpr char smallCase[] = R"({"compounds": ["methane"], "products": ["P"],
    "feeds": [{"name": "F", "temperature": 300, "pressure": 1e5, "flow": 1, "composition": {"methane": 1}}],
    "model": {"script": ["setProduct(1, 1, 1, 'temperature', 300, 'pressure', 1e5);"]}})";

/// One of the steps, each of which contains the ones before it.
struct Step {
    const char* part; ///< what it adds
    std::vector<double> times{};
};

/// What each step adds to the one before it, and which adds most.
void printParts(std::span<const Step> steps) {
    std::string text;
    double before = 0, most = 0;
    const char* largest = "";
    for (const Step& step : steps) {
        const double part = median(step.times) - before;
        before += part;
        if (part > most) {
            most = part;
            largest = step.part;
        }
        text +=
            std::string(text.empty() ? "" : ", ") + step.part + " " + std::to_string(std::lround(part / 1e3));
    }
    std::printf("  milliseconds: %s; most: %s\n", text.c_str(), largest);
}

} // namespace

bool measureColdStart() {
    constexpr int turns = 5;
    const TemporaryFolder temporary;
    const std::wstring caseFile = temporary.path() + L"case.json";
    writeFile(caseFile, smallCase);
    const std::wstring host = builtFile(L"SolvaneHost.exe");
    bool isDone = true;
    const auto run = [&](const std::wstring& arguments) {
        return microseconds([&] { isDone &= Program(host + arguments).wait().exitCode == 0; });
    };
    std::array steps{Step{"a process"}, Step{"the engine's start"}, Step{"the unit and its run"}};
    for (int turn = 0; turn < turns && isDone; ++turn) {
        const double process = run(L" --version");
        std::optional<Engine> engine;
        const double start = microseconds([&] { engine.emplace(); });
        engine.reset();
        steps[0].times.push_back(process);
        steps[1].times.push_back(process + start);
        steps[2].times.push_back(run(L" run \"" + caseFile + L"\""));
    }
    if (!isDone) {
        std::printf("  no run of the sample host\n");
        return false;
    }
    printParts(steps);
    return printTimeAtMost("a run from a cold start / a process and the engine's start",
                           {steps[2].times, steps[1].times}, 1e6);
}

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
