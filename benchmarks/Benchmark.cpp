// How fast a script reaches its unit, and a model its file. All figures are ratios of things measured turn by
// turn in one run, so that the machine's speed cancels out.

#include "ClientRun.h"
#include "Commands.h"
#include "FakeMaterial10.h"
#include "FirstRun.h"
#include "Growth.h"
#include "ModelFiles.h"
#include "PhaseCalls.h"
#include "Scripts.h"
#include "Verdict.h"
#include "Window.h"

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
    std::printf(
        "  microseconds: two-event ping-pong %.1f, getUnitName %.1f, getFeedProp %.1f, COM Invoke %.1f\n",
        median(timings["ping"]), median(timings[unitName]), median(timings[temperature]),
        median(timings[invoke]));
    bool isMet =
        printAtMost("(a) getUnitName / ping-pong", median(ratios(timings[unitName], timings["ping"])), 1.15);
    isMet &= printAtMost("(a) getFeedProp / ping-pong", median(ratios(timings[temperature], timings["ping"])),
                         1.15);
    isMet &= printAtLeast("(b) COM Invoke / getFeedProp, the same property",
                          median(ratios(timings[invoke], timings[temperature])), 5);
    return isMet;
}

/// What a property costs beyond the calls on the material, in round trips.
bool comparePhaseProperty(host::Generation generation, const std::string& direct) {
    const std::string property = " fugacityCoefficient";
    const std::string command = "getSinglePhaseProperty" + property;
    Timings timings =
        measureWithFeed(createHostMaterial(generation).get(), {"ping", command, direct + property});
    const std::vector<double>& commands = timings[command];
    const std::vector<double>& calls = timings[direct + property];
    std::vector<double> added;
    for (std::size_t i = 0; i < commands.size(); ++i)
        added.push_back(commands[i] - calls[i]);
    std::printf("  microseconds: ping-pong %.1f, through the channel %.1f, direct %.1f\n",
                median(timings["ping"]), median(commands), median(calls));
    return printAtMost("(e) (getSinglePhaseProperty - " + direct + ") / ping-pong",
                       median(ratios(added, timings["ping"])), 1.15);
}

int runAll() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    std::printf("Round trips between two processes\n");
    bool isMet = compareRoundTrips();
    std::printf("Every command, on materials with ready numbers\n");
    isMet &= compareCommands();
    std::printf("A property of a phase, materials of version 1.1\n");
    isMet &= comparePhaseProperty(host::Generation::v11, "direct11");
    std::printf("A property of a phase, materials of version 1.0\n");
    isMet &= comparePhaseProperty(host::Generation::v10, "direct10");
    std::printf("Life of a unit\n");
    isMet &= compareFirstRun();
    isMet &= compareScripts();
    isMet &= compareWindow();
    std::printf("Model files\n");
    isMet &= compareModelFiles();
    std::printf("Growth\n");
    isMet &= compareGrowth();
    CoUninitialize();
    printTable();
    return isMet ? 0 : 1;
}

} // namespace

} // namespace solvane

int main(int count, char** arguments) {
    if (count > 1 && std::strcmp(arguments[1], solvane::clientWord) == 0)
        return solvane::runClient({arguments + 2, arguments + count});
    return solvane::runAll();
}
