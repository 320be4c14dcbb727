// How fast a script reaches its unit, and a model its file. All figures are ratios of things measured turn by
// turn in one run, so that the machine's speed cancels out.

#include "ClientProcess.h"
#include "EmptyScript.h"
#include "FakeMaterial10.h"
#include "Folders.h"
#include "GatewayClient.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "ModelFiles.h"
#include "OutOfProcessObject.h"
#include "PhaseCalls.h"
#include "RoundTrip.h"
#include "Verdict.h"
#include "com/Text.h"

#include <cstdio>
#include <cstring>
#include <optional>

namespace solvane {

namespace {

/// A unit with one feed, in front of a scripted Matlab whose script is the client. The client finds `object`
/// where there is one.
Timings measureInRun(IDispatch* feed, const std::vector<std::string>& ways, IDispatch* object = nullptr) {
    const TemporaryFolder temporary;
    MatlabStandIn matlab;
    const UnitModule module;
    const HostedUnit unit(module);
    ModelBag bag;
    bag.script("").feeds({L"Feed"});
    unit.load(bag);
    unit.connect(L"Feed", feed);

    const BareResponder responder;
    const std::wstring objectFile = temporary.path() + L"object";
    std::optional<OfferedObject> offered;
    if (object)
        offered.emplace(ComRef<IDispatch>(object), objectFile);
    Timings timings;
    matlab.onRun = [&](const std::wstring& folder) {
        timings = measureInClient({ways, unitIdOf(folder), responder.id(), objectFile},
                                  temporary.path() + L"results");
        return MatlabAnswer();
    };
    if (FAILED(unit.calculate()))
        std::printf("  the run failed: %s\n", narrow(unit.errorDescription()).c_str());
    return timings;
}

ComRef<IDispatch> streamOf(std::size_t compounds) {
    return ComRef<IDispatch>(FakeMaterial10::create(makeFakeStream(compounds))->dispatch());
}

bool compareRoundTrips() {
    const std::string temperature = "getFeedProp temperature";
    const std::string invoke = "Invoke temperature";
    Timings timings =
        measureInRun(streamOf(10).get(), {"ping", "getUnitName", temperature, invoke}, streamOf(10).get());
    std::printf(
        "  microseconds: two-event ping-pong %.1f, getUnitName %.1f, getFeedProp %.1f, COM Invoke %.1f\n",
        median(timings["ping"]), median(timings["getUnitName"]), median(timings[temperature]),
        median(timings[invoke]));
    bool isMet = printAtMost("(a) getUnitName / ping-pong",
                             median(ratios(timings["getUnitName"], timings["ping"])), 1.15);
    isMet &= printAtMost("(a) getFeedProp / ping-pong", median(ratios(timings[temperature], timings["ping"])),
                         1.15);
    isMet &= printAtLeast("(b) COM Invoke / getFeedProp, the same property",
                          median(ratios(timings[invoke], timings[temperature])), 5);
    return isMet;
}

/// From ten times as many compounds a vector may take ten times as long.
bool compareVectors() {
    const std::string fraction = "getFeedProp fraction";
    std::vector<double> times;
    for (const std::size_t compounds : {2, 20, 200})
        times.push_back(median(measureInRun(streamOf(compounds).get(), {fraction})[fraction]));
    std::printf("  microseconds: %.1f for 2, %.1f for 20, %.1f for 200 compounds\n", times[0], times[1],
                times[2]);
    bool isMet = printAtMost("(d) vector of 20 / of 2 compounds", times[1] / times[0], 10);
    isMet &= printAtMost("(d) vector of 200 / of 20 compounds", times[2] / times[1], 10);
    return isMet;
}

/// What a property costs beyond the calls on the material, in round trips.
bool comparePhaseProperty(host::Generation generation, const std::string& direct) {
    const std::string property = " fugacityCoefficient";
    const std::string command = "getSinglePhaseProperty" + property;
    Timings timings =
        measureInRun(createHostMaterial(generation).get(), {"ping", command, direct + property});
    const std::vector<double>& commands = timings[command];
    const std::vector<double>& calls = timings[direct + property];
    std::vector<double> added;
    for (std::size_t i = 0; i < commands.size(); ++i)
        added.push_back(commands[i] - calls[i]);
    std::printf("  microseconds: ping-pong %.1f, through the channel %.1f, direct %.1f\n",
                median(timings["ping"]), median(commands), median(calls));
    return printAtMost("(e) (getSinglePhaseProperty - direct calls) / ping-pong",
                       median(ratios(added, timings["ping"])), 1.15);
}

int runAll() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    std::printf("Round trips between two processes\n");
    bool isMet = compareRoundTrips();
    std::printf("Calculate with an empty script\n");
    isMet &= compareEmptyScript();
    std::printf("Feed vectors\n");
    isMet &= compareVectors();
    std::printf("A property of a phase, materials of version 1.1\n");
    isMet &= comparePhaseProperty(host::Generation::v11, "direct11");
    std::printf("A property of a phase, materials of version 1.0\n");
    isMet &= comparePhaseProperty(host::Generation::v10, "direct10");
    std::printf("Model files\n");
    isMet &= compareModelFiles();
    CoUninitialize();
    return isMet ? 0 : 1;
}

} // namespace

} // namespace solvane

int main(int count, char** arguments) {
    if (count > 1 && std::strcmp(arguments[1], solvane::clientWord) == 0)
        return solvane::runClient({arguments + 2, arguments + count});
    return solvane::runAll();
}
