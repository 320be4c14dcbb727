#include "TimeGrowth.h"

#include "ClientRun.h"
#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "HostStream.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "Verdict.h"

#include <cstdio>
#include <functional>

namespace solvane {

namespace {

/// The time of one size, a value for each turn.
using Times = std::vector<double>;

/// Ratios between neighbouring sizes. `slack` is how much faster than the size the time may grow.
bool printGrowth(const std::string& what, const std::vector<std::size_t>& sizes,
                 const std::vector<Times>& times, double slack) {
    bool isMet = true;
    for (std::size_t i = 1; i < sizes.size(); ++i)
        isMet &= printAtMost(what + ", " + std::to_string(sizes[i]) + " / " + std::to_string(sizes[i - 1]),
                             {times[i], times[i - 1]},
                             slack * static_cast<double>(sizes[i]) / static_cast<double>(sizes[i - 1]));
    return isMet;
}

Times commandTimes(IDispatch* feed, const std::string& way) {
    ModelBag bag;
    bag.script("").feeds({L"Feed"});
    return measureInRun(bag, {{L"Feed", feed}}, {way})[way];
}

bool compareCompounds() {
    const std::vector<std::size_t> sizes{2, 20, 200, 500};
    std::vector<Times> times;
    for (const std::size_t size : sizes)
        times.push_back(
            commandTimes(FakeMaterial10::create(makeFakeStream(size))->dispatch(), "getFeedProp fraction"));
    return printGrowth("getFeedProp of a vector, compounds", sizes, times, 1);
}

bool comparePhases() {
    const std::vector<std::size_t> sizes{1, 4, 16};
    std::vector<Times> times;
    for (const std::size_t size : sizes) {
        FakeStream stream = makeFakeStream();
        const FakePhase vapor = stream.phases.front();
        stream.phases.clear();
        for (std::size_t i = 0; i < size; ++i) {
            stream.phases.push_back(vapor);
            stream.phases.back().label = L"Phase" + std::to_wstring(i);
            stream.phases.back().fraction = 1.0 / static_cast<double>(size);
        }
        times.push_back(
            commandTimes(FakeMaterial11::create(stream)->dispatch(), "command getFeedEquilibrium"));
    }
    return printGrowth("getFeedEquilibrium, phases", sizes, times, 1);
}

ModelBag modelOf(std::size_t parameters, std::size_t files) {
    ModelBag bag;
    bag.script("1;").reports({L"Duties"});
    for (std::size_t i = 1; i < parameters; ++i)
        bag.parameter(L"p" + std::to_wstring(i), L"real", Variant(1.0));
    bag.parameter(L"Duty", L"real", Variant(1.0));
    for (std::size_t i = 0; i < files; ++i)
        bag.file("file" + std::to_string(i) + ".txt", std::string(1000, 'a'));
    return bag;
}

bool compareParameterCommands() {
    const std::string get = "command getParameter";
    std::vector<Times> times;
    for (const std::size_t size : {1, 10000}) {
        ModelBag bag = modelOf(size, 0);
        times.push_back(measureInRun(bag, {}, {get})[get]);
    }
    return printAtMost("getParameter, the last of 10000 / the only one", {times[1], times[0]}, 1.25);
}

/// Saving and loading the models in turns.
bool compareModels(const std::string& what, const std::vector<std::size_t>& sizes,
                   const std::function<ModelBag(std::size_t)>& model) {
    constexpr int turns = 5;
    MatlabStandIn matlab;
    const UnitModule module;
    std::vector<Times> saving, loading;
    bool isDone = true;
    for (const std::size_t size : sizes) {
        const HostedUnit unit(module);
        ModelBag bag = model(size);
        isDone &= unit.load(bag) == S_OK;
        const auto persistence = unit.as<IPersistStream>();
        Times saves, loads;
        for (int turn = 0; turn < turns; ++turn) {
            HostStream stream;
            saves.push_back(microseconds([&] { isDone &= persistence->Save(&stream, TRUE) == S_OK; }));
            loads.push_back(microseconds([&] { isDone &= persistence->Load(&stream) == S_OK; }));
        }
        const auto each = static_cast<double>(size);
        std::printf("  %zu %s: saved in %.1f, loaded in %.1f microseconds each\n", size, what.c_str(),
                    median(saves) / each, median(loads) / each);
        saving.push_back(std::move(saves));
        loading.push_back(std::move(loads));
    }
    if (!isDone)
        std::printf("  saving or loading failed\n");
    isDone &= printGrowth("saving, " + what, sizes, saving, 1.5);
    isDone &= printGrowth("loading, " + what, sizes, loading, 1.5);
    return isDone;
}

} // namespace

bool compareGrowth() {
    bool isMet = compareCompounds();
    isMet &= comparePhases();
    isMet &= compareParameterCommands();
    isMet &=
        compareModels("parameters", {1, 100, 1000, 10000}, [](std::size_t size) { return modelOf(size, 0); });
    isMet &= compareModels("files", {1, 10, 100, 1000}, [](std::size_t size) { return modelOf(1, size); });
    return isMet;
}

} // namespace solvane
