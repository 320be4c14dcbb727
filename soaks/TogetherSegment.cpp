// Four processes with two units each, all calculating at the same time: no unit disturbs another.

#include "Drum.h"
#include "Folders.h"
#include "Leftovers.h"
#include "Processes.h"
#include "Progress.h"
#include "Roles.h"
#include "Segments.h"
#include "com/Handle.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

namespace solvane::soak {

namespace {

constexpr int processes = 4;
constexpr int unitsOfAProcess = 2;
constexpr double temperature = 255; // K

/// Works in an apartment of its own: writes what went wrong, and each result that differs.
void calculateOften(const UnitModule& module, int number, int runs, const std::wstring& file) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        std::ofstream lines(std::filesystem::path(file), std::ios::binary);
        Drum drum(module, number);
        for (int run = 0; run < runs; ++run) {
            std::string error = drum.startError();
            if (error.empty() && drum.calculate(temperature, error))
                error = drum.products();
            lines << error << '\0' << std::flush;
        }
    }
    CoUninitialize();
}

std::wstring resultFile(const std::wstring& folder, int number) {
    return folder + L"\\results" + std::to_wstring(number);
}

/// What that drum gives when nothing else is at work.
std::string calculateAlone(const UnitModule& module, int number) {
    Drum drum(module, number);
    std::string error = drum.startError();
    return error.empty() && drum.calculate(temperature, error) ? drum.products() : "? " + error;
}

} // namespace

int calculateInProcess(const std::vector<std::wstring>& arguments) {
    const int first = std::stoi(arguments.at(0));
    const int runs = std::stoi(arguments.at(1));
    const UnitModule module;
    std::vector<std::thread> threads;
    for (int i = first; i < first + unitsOfAProcess; ++i)
        threads.emplace_back([&, i] { calculateOften(module, i, runs, resultFile(arguments.at(2), i)); });
    for (std::thread& thread : threads)
        thread.join();
    return 0;
}

void soakTogether(const Effort& effort, const Figures& figures) {
    const int runs = effort.of(10, 1000);
    const std::wstring mark = L"together-" + std::to_wstring(GetCurrentProcessId());
    markDescendants(mark);
    const TemporaryFolder temporary;
    constexpr int units = processes * unitsOfAProcess;
    std::vector<std::string> expected;
    {
        const UnitModule module;
        for (int i = 0; i < units; ++i)
            expected.push_back(calculateAlone(module, i));
    }
    const TemporaryFolder results;
    SetEnvironmentVariableW(L"TMP", temporary.path().c_str());
    const std::wstring folder = results.path().substr(0, results.path().size() - 1);
    Progress progress("runs of eight units", units * runs);
    std::vector<Handle> running;
    for (int i = 0; i < units; i += unitsOfAProcess)
        running.emplace_back(
            startSelf({roleOption, L"calculate", std::to_wstring(i), std::to_wstring(runs), folder}));
    const auto count = [&](auto&& judge) {
        int sum = 0;
        for (int i = 0; i < units; ++i) {
            std::ifstream lines(std::filesystem::path(resultFile(folder, i)), std::ios::binary);
            for (std::string line; std::getline(lines, line, '\0');)
                sum += judge(i, line);
        }
        return sum;
    };
    const auto all = [](int, const std::string&) { return 1; };
    for (const Handle& process : running)
        while (WaitForSingleObject(process.get(), 2000) == WAIT_TIMEOUT)
            progress.at(std::min(count(all), units * runs - 1));
    const int done = count(all);
    progress.at(done);
    const int wrong = count([&](int unit, const std::string& line) {
        const bool isRight = line == expected[static_cast<std::size_t>(unit)];
        if (!isRight)
            std::printf("  unit %d: %s\n", unit, line.c_str());
        return isRight ? 0 : 1;
    });
    figures.put("runs of eight units at once", done);
    figures.put("runs that failed or gave different streams", wrong + units * runs - done);
    figures.put("units whose streams differ", double(std::set(expected.begin(), expected.end()).size()));
    figures.put("folders left", double(workingFoldersIn(temporary.path())));
    const bool haveEnded = comesTrue([&] { return octavesWith(mark).empty(); });
    figures.put("engines left after ten seconds", haveEnded ? 0 : double(octavesWith(mark).size()));
}

} // namespace solvane::soak
