// How a unit is called, in which order, and how its failures are reported.
#include "flowsheet/Flowsheet.h"
#include "RecordingUnit.h"
#include "com/Module.h"
#include "flowsheet/InterfaceRegistration.h"

#include <gtest/gtest.h>

#include <objbase.h>

namespace solvane::host {

namespace {

ComModule module;

/// The test runs on the thread of a host's windows.
class UnitRuns : public testing::Test {
protected:
    UnitRuns() {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        unitClass.emplace();
        flowsheet.compounds = {findCompound("methane"), findCompound("propane")};
        flowsheet.feeds = {
            {.name = "in", .temperature = 300, .pressure = 1e5, .flow = 3, .composition = {0.25, 0.75}}};
        flowsheet.units = {{.progId = recordingUnit,
                            .name = "Mixer",
                            .model = UnitModel(),
                            .feeds = {{"in", "in"}},
                            .products = {{"out", "out"}}}};
    }
    ~UnitRuns() override {
        EXPECT_EQ(unitLog().liveUnits, 0);
        unitClass.reset();
        CoUninitialize();
    }

    bool run(const char* profile = "standard") {
        flowsheet.profile = *findProfile(profile);
        results = {};
        return runCase(
            flowsheet,
            [this](std::string_view unit, std::string_view line) {
                log.append(unit).append(": ").append(line).append("\n");
            },
            results, error);
    }
    static std::string calls() {
        std::string text;
        for (const std::string& call : unitLog().calls)
            text += (text.empty() ? "" : " ") + call;
        return text;
    }

    std::optional<RecordingUnitClass> unitClass;
    Case flowsheet;
    RunResults results;
    std::string log;
    std::string error;
};

TEST_F(UnitRuns, returnStreamsAndTheUnitsLog) {
    ASSERT_TRUE(run()) << error;
    EXPECT_EQ(log, "Mixer: grüße\n");
    ASSERT_EQ(results.streams.size(), 2u);
    EXPECT_EQ(results.streams[1].name, "out");
    EXPECT_EQ(results.streams[1].totalFlow, 3);
    EXPECT_EQ(results.streams[1].fraction, (std::vector<double>{0.25, 0.75}));
    EXPECT_EQ(results.streams[1].vaporFraction, 1);
    EXPECT_EQ(results.streams[1].enthalpy, results.streams[0].enthalpy);
    ASSERT_EQ(results.balances.size(), 1u);
    EXPECT_EQ(results.balances[0].moles.out, 3);
    EXPECT_TRUE(results.warnings.empty());
}

TEST_F(UnitRuns, callTheUnitInTheProfilesOrder) {
    struct Row {
        const char* profile;
        const char* calls;
    };
    const Row rows[] = {
        {"standard",
         "context Load Initialize Connect Connect Validate Calculate Disconnect Disconnect Terminate"},
        {"early", "Load Initialize context Connect Connect Validate Calculate Disconnect Disconnect"},
        {"reconnecting", "Initialize context Load Connect Connect "
                         "Disconnect Disconnect Connect Connect Validate "
                         "Disconnect Disconnect Connect Connect Calculate "
                         "Disconnect Disconnect Connect Connect "
                         "Disconnect Disconnect Connect Connect "
                         "Disconnect Disconnect Terminate"},
        {"reentrant", "context Load Initialize Connect Connect Validate Calculate Validate Calculate "
                      "Disconnect Disconnect Terminate"},
        {"reentrant-terminate", "context Load Initialize Connect Connect Validate Calculate Terminate "
                                "Disconnect Disconnect Terminate"},
        {"reentrant-release", "context Load Initialize Connect Connect Validate Calculate"},
    };
    for (const Row& row : rows) {
        unitLog().calls.clear();
        EXPECT_TRUE(run(row.profile)) << error;
        EXPECT_EQ(calls(), row.calls) << row.profile;
    }
    EXPECT_NE(log.find("Mixer: Release in a material call: done"), std::string::npos) << log;
}

TEST_F(UnitRuns, reachTheUnitOnItsOwnThread) {
    const bool wasRegistered = areInterfacesRegistered();
    std::string report;
    if (!wasRegistered) {
        EXPECT_FALSE(run("ui-thread-and-worker"));
        EXPECT_NE(error.find("SolvaneHost register-interfaces"), std::string::npos) << error;
        unitLog() = {};
        ASSERT_TRUE(registerInterfaces(report, error)) << error;
        ASSERT_TRUE(areInterfacesRegistered());
    }
    EXPECT_TRUE(run("ui-thread-and-worker")) << error;
    EXPECT_EQ(calls(),
              "Initialize context Load Connect Connect Validate Calculate Disconnect Disconnect Terminate");
    for (const DWORD thread : unitLog().threads)
        EXPECT_EQ(thread, GetCurrentThreadId());
    ASSERT_EQ(results.streams.size(), 2u);
    EXPECT_EQ(results.streams[1].totalFlow, 3);

    unitLog().calculateFailure = L"it boils over";
    EXPECT_FALSE(run("ui-thread-and-worker"));
    EXPECT_EQ(error, "Calculate failed: it boils over");

    if (!wasRegistered) {
        ASSERT_TRUE(unregisterInterfaces(report, error)) << error;
        EXPECT_FALSE(areInterfacesRegistered());
    }
}

TEST_F(UnitRuns, reportFailuresOfHostAndUnit) {
    struct Row {
        std::function<void(UnitLog&, Case&)> fault;
        const char* message;
    };
    const Row rows[] = {
        {[](UnitLog& unit, Case&) { unit.initializeFailure = L"no Matlab"; }, "Initialize failed: no Matlab"},
        {[](UnitLog& unit, Case&) { unit.loadEntry = L"calc.m not found"; },
         "The unit rejects a part of its model; files: calc.m not found"},
        {[](UnitLog& unit, Case&) { unit.invalidMessage = L"Feed port not connected"; },
         "The unit is not valid: Feed port not connected"},
        {[](UnitLog& unit, Case&) { unit.calculateFailure = L"it boils over"; },
         "Calculate failed: it boils over"},
        {[](UnitLog& unit, Case&) { unit.producesNothing = true; },
         "Stream \"out\": temperature is neither set nor calculated"},
        {[](UnitLog&, Case& bad) { bad.units[0].products[0].port = "top"; },
         "Looking for the port \"top\" failed: no such port"},
        {[](UnitLog&, Case& bad) { bad.units[0].progId = "No.Such.Unit"; },
         "No component is registered as \"No.Such.Unit\""},
        {[](UnitLog&, Case& bad) { bad.units[0].parameters = {{"T", 1.0}}; },
         "The unit has no parameter \"T\""},
        {[](UnitLog&, Case& bad) { bad.feeds[0].temperature = 1e6; }, "Feed \"in\": The flash failed: "},
    };
    const Case goodCase = flowsheet;
    for (const Row& row : rows) {
        unitLog() = {};
        flowsheet = goodCase;
        row.fault(unitLog(), flowsheet);
        EXPECT_FALSE(run()) << row.message;
        EXPECT_TRUE(error.starts_with(row.message)) << error;
        if (calls().find("Calculate") != std::string::npos) {
            EXPECT_TRUE(calls().ends_with("Terminate")) << calls();
        }
    }
}

TEST_F(UnitRuns, passStreamsFromUnitToUnit) {
    flowsheet.isFlowsheet = true;
    flowsheet.units.push_back(flowsheet.units[0]);
    flowsheet.units[1].name = "Splitter";
    flowsheet.units[1].model = {}; // it needs no model
    flowsheet.units[1].feeds[0].stream = "out";
    flowsheet.units[1].products[0].stream = "end";
    ASSERT_TRUE(run()) << error;
    EXPECT_EQ(calls(), "context Load Initialize context Initialize "
                       "Connect Connect Validate Calculate Disconnect Disconnect "
                       "Connect Connect Validate Calculate Disconnect Disconnect Terminate Terminate");
    ASSERT_EQ(results.streams.size(), 3u);
    EXPECT_EQ(results.streams[2].name, "end");
    EXPECT_EQ(results.streams[2].totalFlow, 3);
    EXPECT_EQ(results.units.at(1).name, "Splitter");

    flowsheet.units[1].products[0].port = "top";
    EXPECT_FALSE(run());
    EXPECT_EQ(error, "Unit \"Splitter\": Looking for the port \"top\" failed: no such port; the unit's "
                     "ports: in, out");
}

TEST_F(UnitRuns, endBeforeTheNextUnitOnAStopRequest) {
    flowsheet.isFlowsheet = true;
    flowsheet.units.push_back(flowsheet.units[0]);
    flowsheet.units[1].name = "Splitter";
    flowsheet.units[1].feeds[0].stream = "out";
    flowsheet.units[1].products[0].stream = "end";
    const auto ignore = [](std::string_view, std::string_view) {};
    RunWatch watch({});
    unitLog().inCalculate = [&] { watch.requestStop(); };
    EXPECT_FALSE(runCase(flowsheet, ignore, results, error, &watch));
    EXPECT_EQ(calls(), "context Load Initialize context Load Initialize "
                       "Connect Connect Validate Calculate Disconnect Disconnect Terminate Terminate");
    EXPECT_EQ(error, "Interrupted: unit \"Splitter\"");
    EXPECT_EQ(results.failure->message, "Interrupted");
    EXPECT_EQ(results.streams.size(), 2u);
    EXPECT_EQ(results.units[0].status, UnitStatus::calculated);

    unitLog().calls.clear();
    EXPECT_FALSE(runCase(flowsheet, ignore, results, error, &watch));
    EXPECT_EQ(calls(), "") << "no unit may start";
}

// Nothing is known of what other units keep.
TEST_F(UnitRuns, makeOtherUnitsAnewForEachRun) {
    Flowsheet repeated(flowsheet, [](std::string_view, std::string_view) {});
    ASSERT_TRUE(repeated.run(results, error)) << error;
    Case variation = flowsheet;
    variation.feeds[0].flow = 5;
    ASSERT_TRUE(repeated.run(variation, results, error)) << error;
    EXPECT_EQ(calls(), "context Load Initialize Connect Connect Validate Calculate Disconnect Disconnect "
                       "Terminate "
                       "context Load Initialize Connect Connect Validate Calculate Disconnect Disconnect");
    ASSERT_EQ(results.streams.size(), 2u);
    EXPECT_EQ(results.streams[1].totalFlow, 5);
}

} // namespace

} // namespace solvane::host
