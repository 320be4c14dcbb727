// How fast a script reaches its unit, a model its file, and the sample host an equilibrium. All figures are
// ratios of things measured turn by turn in one run, so that the machine's speed cancels out.

#include "ClientRun.h"
#include "CommandRequests.h"
#include "FakeMaterial10.h"
#include "FirstRun.h"
#include "Flashes.h"
#include "ModelFiles.h"
#include "OwnTime.h"
#include "PhaseCalls.h"
#include "Scripts.h"
#include "TimeGrowth.h"
#include "Verdict.h"
#include "Window.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace solvane {

namespace {

/// A run with that material on the one feed.
Timings measureWithFeed(IDispatch* feed, const std::vector<std::string>& ways, IDispatch* object = nullptr) {
    ModelBag bag;
    bag.script("").feeds({L"Feed"});
    return measureInRun(bag, {{L"Feed", feed}}, ways, object);
}

ComRef<IDispatch> streamOf(std::size_t compounds) {
    return ComRef<IDispatch>(FakeMaterial10::create(makeFakeStream(compounds))->dispatch());
}

bool compareRoundTrips() {
    const std::string temperature = "getFeedProp temperature";
    const std::string unitName = "command getUnitName";
    const std::string invoke = "Invoke temperature";
    Timings timings =
        measureWithFeed(streamOf(10).get(), {"ping", unitName, temperature, invoke}, streamOf(10).get());
    bool isMet = printAtMost("getUnitName / ping-pong", {timings[unitName], timings["ping"]}, 1.15);
    isMet &= printAtMost("getFeedProp / ping-pong", {timings[temperature], timings["ping"]}, 1.15);
    isMet &= printAtLeast("COM Invoke / getFeedProp, the same property",
                          {timings[invoke], timings[temperature]}, 5);
    return isMet;
}

/// What a property costs beyond the calls on the material, in round trips.
bool comparePhaseProperty(host::Generation generation) {
    const bool is11 = generation == host::Generation::v11;
    const std::string direct = is11 ? "direct11" : "direct10";
    const std::string property = " fugacityCoefficient";
    const std::string command = "getSinglePhaseProperty" + property;
    Timings timings =
        measureWithFeed(createHostMaterial(generation).get(), {"ping", command, direct + property});
    const std::vector<double>& commands = timings[command];
    const std::vector<double>& calls = timings[direct + property];
    std::vector<double> added;
    for (std::size_t i = 0; i < commands.size(); ++i)
        added.push_back(commands[i] - calls[i]);
    return printAtMost(std::string("getSinglePhaseProperty less the calls on a material of version ") +
                           (is11 ? "1.1" : "1.0") + " / ping-pong",
                       {added, timings["ping"]}, 1.15);
}

bool compareLife() {
    bool isMet = measureColdStart();
    isMet &= compareFirstRun();
    isMet &= compareScripts();
    return isMet;
}

struct Group {
    const char* name;
    const char* summary;
    bool (*compare)();
};
constexpr Group groups[]{
    {"trips", "Round trips between two processes", compareRoundTrips},
    {"commands", "Every command to a ping-pong, with a host that answers at once", compareCommands},
    {"own", "The unit's own time for a command, without the host's calls", compareOwnTimes},
    {"phase11", "A property of a phase, materials of version 1.1",
     [] { return comparePhaseProperty(host::Generation::v11); }},
    {"phase10", "A property of a phase, materials of version 1.0",
     [] { return comparePhaseProperty(host::Generation::v10); }},
    {"life", "Life of a unit", compareLife},
    {"window", "The unit's window", compareWindow},
    {"models", "Model files", compareModelFiles},
    {"growth", "Growth", compareGrowth},
    {"flashes", "Flashes of the sample host's property package", compareFlashes},
};

enum ExitCode { exitMet = 0, exitMissed = 1, exitUsage = 2 };

int runGroups(const std::vector<std::string>& chosen) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    bool isMet = true;
    for (const Group& group : groups) {
        if (!chosen.empty() && std::ranges::find(chosen, group.name) == chosen.end())
            continue;
        std::printf("%s\n", group.summary);
        isMet &= group.compare();
    }
    CoUninitialize();
    printTable();
    return isMet ? exitMet : exitMissed;
}

int runProgram(int count, char** arguments) {
    std::vector<std::string> chosen;
    std::vector<std::string> names;
    std::string list = "Groups:";
    for (const Group& group : groups) {
        names.emplace_back(group.name);
        list += std::string("\n  ") + group.name + std::string(10 - names.back().size(), ' ') + group.summary;
    }
    CLI::App app("Measures the unit's speed, each time against a reference in the same run.", "bench");
    app.allow_windows_style_options(false);
    app.add_option("group", chosen, "Run only these groups")->check(CLI::IsMember(names));
    app.footer(list + "\n\nExit codes: 0 every goal is met, 1 a goal is missed, 2 a bad command line.");
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? exitMet : exitUsage;
    }
    return runGroups(chosen);
}

} // namespace

} // namespace solvane

int main(int count, char** arguments) {
    if (count > 1 && std::strcmp(arguments[1], solvane::clientWord) == 0)
        return solvane::runClient({arguments + 2, arguments + count});
    return solvane::runProgram(count, arguments);
}
