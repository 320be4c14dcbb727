#include "HostCommands.h"

#include "cases/CaseReader.h"
#include "flowsheet/Flowsheet.h"
#include "results/ResultsJson.h"
#include "studies/Variation.h"

#include <windows.h>

#include <iostream>
#include <optional>

namespace solvane::host {

namespace {

/// Ends the process in the middle of a run that cannot be stopped, as one of Matlab, with an answer.
void answerAndEnd(const RunWatch& watch) {
    RunResults results;
    results.failure = {.unit = watch.unit(), .message = watch.stopText()};
    print(stdout, resultsJson(results, -1));
    TerminateProcess(GetCurrentProcess(), calculationFailed);
}

} // namespace

ExitCode serveCommand(const ServeOptions& options) {
    SetConsoleCtrlHandler(nullptr, TRUE); // the study that started this process stops it
    Case flowsheet;
    std::string error;
    if (!readCase(options.casePath, flowsheet, error))
        return complain(badUsage, error);
    const RunWatchSettings settings{.limit = options.limit, .giveUp = answerAndEnd};
    Flowsheet units(flowsheet, [](std::string_view, std::string_view) {});
    std::optional<RunWatch> watch;
    for (std::string line; std::getline(std::cin, line);) {
        applyLine(line, flowsheet);
        RunResults results;
        if (!watch || options.limit) // which each run has for itself
            watch.emplace(settings);
        // A failure is in the results.
        static_cast<void>(units.run(flowsheet, results, error, &*watch));
        print(stdout, resultsJson(results, -1));
    }
    return ok;
}

} // namespace solvane::host
