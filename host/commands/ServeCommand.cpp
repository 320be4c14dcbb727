#include "HostCommands.h"

#include "cases/CaseReader.h"
#include "flowsheet/Flowsheet.h"
#include "results/ResultsJson.h"
#include "studies/Variation.h"

#include <windows.h>

#include <iostream>

namespace solvane::host {

ExitCode serveCommand(const std::string& casePath) {
    SetConsoleCtrlHandler(nullptr, TRUE); // the study that started this process ends it
    Case flowsheet;
    std::string error;
    if (!readCase(casePath, flowsheet, error))
        return complain(badUsage, error);
    Flowsheet units(flowsheet, [](std::string_view, std::string_view) {});
    for (std::string line; std::getline(std::cin, line);) {
        applyLine(line, flowsheet);
        RunResults results;
        // A failure is in the results.
        static_cast<void>(units.run(flowsheet, results, error));
        print(stdout, resultsJson(results, -1));
    }
    return ok;
}

} // namespace solvane::host
