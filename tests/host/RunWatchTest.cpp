// What watches a run from another thread, with times that suit a test.
#include "flowsheet/RunWatch.h"
#include "channel/StopEvent.h"

#include <gmock/gmock.h>

#include <atomic>

namespace solvane::host {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// What the engine does.
bool isEventSet() {
    const Handle event(OpenEventW(SYNCHRONIZE, FALSE, stopEventName(GetCurrentProcessId()).c_str()));
    return event && WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0;
}

void waitFor(const std::atomic<int>& count, int value) {
    for (int i = 0; i < 500 && count < value; ++i)
        std::this_thread::sleep_for(10ms);
}

TEST(RunWatch, beatsWithWhatRuns) {
    std::vector<std::string> lines;
    std::atomic<int> beats = 0;
    {
        RunWatch watch({.heartbeat = 200ms, .beat = [&](const std::string& line) {
                            lines.push_back(line);
                            ++beats;
                        }});
        waitFor(beats, 1);
        watch.beginUnit("Drum");
        watch.log("two\nlines");
        waitFor(beats, 2);
        watch.beginUnit("Valve");
        waitFor(beats, 3);
    }
    lines.resize(3);
    EXPECT_THAT(lines, ElementsAre("Still running after 0 s: no unit has started",
                                   "Still running after 0 s: unit \"Drum\"; last log line: two",
                                   "Still running after 0 s: unit \"Valve\""));
}

TEST(RunWatch, stopsOnceAndThenGivesUp) {
    struct Row {
        RunWatchSettings settings;
        bool isInterrupted;
        const char* text;
    };
    const Row rows[] = {{{.limit = 0.05}, false, "The run did not end within the limit of 0.05 s"},
                        {{.limit = 3600.0}, true, "Interrupted"}};
    for (const Row& row : rows) {
        std::atomic<int> gaveUp = 0;
        RunWatchSettings settings = row.settings;
        settings.patience = 200ms;
        settings.giveUp = [&](const RunWatch& watch) {
            EXPECT_TRUE(isEventSet());
            EXPECT_EQ(watch.stopText(), row.text);
            ++gaveUp;
        };
        const auto start = std::chrono::steady_clock::now();
        RunWatch watch(settings);
        EXPECT_FALSE(isEventSet());
        EXPECT_EQ(watch.stopText(), "");
        if (row.isInterrupted)
            watch.requestStop();
        waitFor(gaveUp, 1);
        EXPECT_GE(std::chrono::steady_clock::now() - start, 200ms);
        watch.requestStop();
        EXPECT_EQ(watch.stopText(), row.text);
        EXPECT_EQ(gaveUp, 1);
    }
}

TEST(RunWatch, limitsEachRun) {
    RunWatch watch({.limit = 0.2, .patience = 1h});
    for (const char* name : {"first", "second"}) {
        watch.beginRun(name);
        EXPECT_EQ(watch.place(), std::string(name) + ": no unit has started");
        watch.beginUnit("Drum");
        for (int i = 0; i < 500 && !watch.isStopRequested(); ++i)
            std::this_thread::sleep_for(10ms);
        EXPECT_TRUE(isEventSet());
        EXPECT_EQ(watch.stopReason(), StopReason::limit);
        watch.endRun();
        std::this_thread::sleep_for(300ms);
        EXPECT_FALSE(isEventSet()) << "the next run would fail, or the time between runs counts";
        EXPECT_FALSE(watch.isStopRequested());
    }
    watch.requestStop();
    watch.endRun();
    EXPECT_EQ(watch.stopReason(), StopReason::interruption);
}

TEST(RunWatch, endsWithItsRun) {
    const Handle heldByEngine(
        CreateEventW(nullptr, TRUE, FALSE, stopEventName(GetCurrentProcessId()).c_str()));
    {
        RunWatch watch({.giveUp = [](const RunWatch&) { ADD_FAILURE() << "the run has ended in time"; }});
        watch.requestStop();
        EXPECT_TRUE(isEventSet());
    }
    EXPECT_FALSE(isEventSet()) << "the next run would fail";
}

} // namespace

} // namespace solvane::host
