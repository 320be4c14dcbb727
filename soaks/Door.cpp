#include "Door.h"

#include "Folders.h"
#include "MemoryGrowth.h"
#include "ProcessGrowth.h"
#include "Progress.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <thread>

namespace solvane::soak {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds patience(60); // for one input
constexpr int mostToldFaults = 10;

std::atomic<std::uint32_t> seedInWork;
std::atomic<int> numberInWork;

void report(const char* what) {
    std::printf("  seed %u, input %d: %s\n", seedInWork.load(), numberInWork.load(), what);
    std::fflush(stdout);
}

LONG CALLBACK tellCrash(EXCEPTION_POINTERS* crash) {
    char text[60];
    std::snprintf(text, sizeof text, "crash, code 0x%lX", crash->ExceptionRecord->ExceptionCode);
    report(text);
    return EXCEPTION_CONTINUE_SEARCH;
}

/// Ends the process where one input takes too long.
class HangWatch {
public:
    HangWatch() : thread_([this](const std::stop_token& stop) { watch(stop); }) {}

    void begin() { began_ = Clock::now().time_since_epoch().count(); }

private:
    void watch(const std::stop_token& stop) const {
        while (!stop.stop_requested()) {
            Sleep(100);
            const Clock::time_point began{Clock::duration(began_.load())};
            if (Clock::now() - began < patience)
                continue;
            report("not done after a minute");
            TerminateProcess(GetCurrentProcess(), 1);
        }
    }

    std::atomic<Clock::rep> began_ = Clock::now().time_since_epoch().count();
    std::jthread thread_;
};

/// Makes the temporary folder, which is the door's own, the current folder too: a file written outside the
/// unit's folder, or by a name without a folder, is found there.
class WatchedFolder {
public:
    WatchedFolder() { std::filesystem::current_path(path_); }
    ~WatchedFolder() { std::filesystem::current_path(former_); }
    WatchedFolder(const WatchedFolder&) = delete;
    WatchedFolder& operator=(const WatchedFolder&) = delete;

    std::vector<std::wstring> names() const {
        std::vector<std::wstring> names = namesIn(path_.wstring());
        // The name of a unit's folder differs each time.
        for (std::wstring& name : names)
            if (name.starts_with(L'{'))
                name = L"{unit}";
        return names;
    }

private:
    std::filesystem::path path_ = std::filesystem::temp_directory_path();
    std::filesystem::path former_ = std::filesystem::current_path();
};

} // namespace

void soakDoor(Door& door, const Effort& effort, int count, const Figures& figures) {
    SetUnhandledExceptionFilter(tellCrash);
    std::signal(SIGABRT, [](int) { report("aborted"); });
    seedInWork = effort.seed;
    HangWatch watch;
    const WatchedFolder folder;
    const int first = effort.input.value_or(0);
    const int end = effort.input ? first + 1 : count;
    Progress progress("damaged inputs", end - first);
    std::vector<std::wstring> outside;
    std::optional<Growth> growth;
    MemoryGrowth memory(end - first);
    int accepted = 0;
    int faults = 0;
    auto longest = Clock::duration::zero();
    // The first tenth makes everything that is made only once.
    const int warmUp = first + (end - first) / 10;
    for (int number = first; number < end; ++number) {
        numberInWork = number;
        memory.at(number - first);
        watch.begin();
        const auto began = Clock::now();
        const Verdict verdict = door.attempt(effort.seed, number);
        longest = std::max(longest, Clock::now() - began);
        accepted += verdict.isAccepted;
        if (!verdict.fault.empty() && ++faults <= mostToldFaults)
            report(verdict.fault.c_str());
        if (number == warmUp) {
            growth.emplace("host", GetCurrentProcessId());
            outside = folder.names();
            door.startCounting();
        }
        progress.at(number + 1 - first);
    }
    growth->put(figures, memory.gained());
    std::signal(SIGABRT, SIG_DFL);
    figures.put("damaged inputs", end - first);
    figures.put("damaged inputs accepted", accepted);
    figures.put("crashes, silent refusals, wrong answers", faults);
    figures.put("longest", std::chrono::duration<double>(longest).count());
    figures.put("files outside the unit's folder", folder.names() == outside ? 0 : 1);
}

} // namespace solvane::soak
