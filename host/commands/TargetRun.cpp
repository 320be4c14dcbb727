#include "TargetRun.h"

#include "Console.h"
#include "flowsheet/Flowsheet.h"
#include "results/ResultTables.h"

#include <algorithm>

namespace solvane::host {

namespace {

/// Prints the last line of the table, the first one with the heading. All numbers fit in the columns.
void printTrial(const AdjustmentResult& adjustment) {
    constexpr std::size_t width = 14;
    Table table = trialTable(adjustment);
    Line& heading = table.lines.front();
    for (std::size_t i = table.labels; i < heading.size(); ++i)
        heading[i].insert(0, width - std::min(width, heading[i].size()), ' ');
    const std::string text = columns({heading, table.lines.back()}, table.labels);
    print(stdout, adjustment.trials.size() == 1 ? text : text.substr(text.find('\n') + 1));
}

} // namespace

bool runToTarget(const Case& flowsheet, const Adjustment& adjustment, RunResults& results, std::string& error,
                 RunWatch& watch) {
    Flowsheet units(flowsheet, printUnitLine);
    Case varied = flowsheet;
    const auto calculate = [&](const Variation& variation, RunResults& trial, std::string& trialError) {
        varied.feeds = variation.feeds;
        for (std::size_t i = 0; i < varied.units.size(); ++i)
            varied.units[i].parameters = variation.parameters[i];
        return units.run(varied, trial, trialError, &watch);
    };
    const bool isReached = reachTarget(flowsheet, adjustment, calculate, printTrial, results, error);
    print(stdout, "\n");
    return isReached;
}

} // namespace solvane::host
