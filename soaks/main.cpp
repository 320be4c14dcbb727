// Stresses the unit. Runs each segment in a process of its own and prints one table of all figures.
#include "Processes.h"
#include "Roles.h"
#include "Segments.h"
#include "com/Text.h"

#include <CLI/CLI.hpp>

#include <objbase.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace solvane::soak {

namespace {

enum ExitCode { exitHolds = 0, exitBroken = 1, exitUsage = 2 };

struct Options {
    Effort effort;
    std::vector<std::string> segments;
    std::string figureFile; ///< in the process of one segment
};

int runSegment(const Segment& segment, const Options& options) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    segment.run(options.effort, Figures(widen(options.figureFile), segment.name));
    CoUninitialize();
    return exitHolds;
}

/// The exit code of the segment's process.
DWORD startSegment(const Segment& segment, const Options& options, const std::wstring& figureFile) {
    std::vector<std::wstring> words{widen(segment.name),
                                    L"--figures",
                                    figureFile,
                                    L"--scale",
                                    std::to_wstring(options.effort.scale),
                                    L"--seed",
                                    std::to_wstring(options.effort.seed)};
    if (options.effort.isFull)
        words.push_back(L"--full");
    if (options.effort.input)
        words.insert(words.end(), {L"--input", std::to_wstring(*options.effort.input)});
    const Handle running = startSelf(words);
    WaitForSingleObject(running.get(), INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(running.get(), &code);
    return code;
}

bool isChosen(const Segment& segment, const Options& options) {
    return options.segments.empty() ||
           std::ranges::find(options.segments, segment.name) != options.segments.end();
}

int runAll(const Options& options) {
    const std::wstring figureFile =
        (std::filesystem::temp_directory_path() / (L"soak-" + std::to_wstring(GetCurrentProcessId())))
            .wstring();
    bool holds = true;
    for (const Segment& segment : segments) {
        if (!isChosen(segment, options))
            continue;
        std::printf("%s: %s\n", segment.name, segment.summary);
        std::fflush(stdout);
        if (const DWORD code = startSegment(segment, options, figureFile); code != 0) {
            std::printf("  %s ended with code 0x%lX\n", segment.name, code);
            holds = false;
        }
    }
    const FigureValues values = readFigures(figureFile);
    std::error_code ignored;
    std::filesystem::remove(figureFile, ignored);
    std::printf("\n");
    printTableHead();
    for (const Segment& segment : segments)
        if (isChosen(segment, options))
            holds &= printTable(values, segment.name);
    return holds ? exitHolds : exitBroken;
}

/// Without COM: each thread of a role has an apartment of its own.
int runRole(const std::vector<std::wstring>& words) {
    const auto role = std::ranges::find(roles, words.at(0), &Role::name);
    return role == roles.end() ? exitUsage : role->run({words.begin() + 1, words.end()});
}

int runProgram(int count, char** arguments) {
    std::vector<std::wstring> words;
    for (int i = 1; i < count; ++i)
        words.push_back(widen(arguments[i]));
    if (words.size() > 1 && words[0] == roleOption)
        return runRole({words.begin() + 1, words.end()});
    Options options;
    bool onlyLists = false;
    std::vector<std::string> names;
    for (const Segment& segment : segments)
        names.emplace_back(segment.name);
    CLI::App app("Stresses the unit for some minutes, and prints one table of figures and their limits.",
                 "soak");
    app.allow_windows_style_options(false);
    app.add_option("segment", options.segments, "Run only these segments")->check(CLI::IsMember(names));
    app.add_flag("--full", options.effort.isFull, "The full counts: takes hours");
    app.add_option("--scale", options.effort.scale, "Multiply every count by this factor")
        ->check(CLI::PositiveNumber);
    app.add_option("--seed", options.effort.seed, "Random seed");
    app.add_option("--input", options.effort.input, "Run only this one of a segment's damaged inputs");
    app.add_flag("--list", onlyLists, "List the segments");
    app.add_option("--figures", options.figureFile)->group(""); // for the process of one segment
    app.footer("Exit codes: 0 every limit holds, 1 a limit is broken, 2 a bad command line.");
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? exitHolds : exitUsage;
    }
    if (onlyLists) {
        for (const Segment& segment : segments)
            std::printf("%-10s %s\n", segment.name, segment.summary);
        return exitHolds;
    }
    if (options.figureFile.empty())
        return runAll(options);
    return runSegment(*std::ranges::find(segments, options.segments.at(0), &Segment::name), options);
}

} // namespace

} // namespace solvane::soak

int main(int count, char** arguments) {
    return solvane::soak::runProgram(count, arguments);
}
