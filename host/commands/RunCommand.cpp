#include "HostCommands.h"

#include "Interrupts.h"
#include "ResultFiles.h"
#include "TargetRun.h"
#include "UnitParameters.h"
#include "cases/CaseReader.h"
#include "flowsheet/Flowsheet.h"
#include "flowsheet/UnitCalls.h"
#include "results/Abridged.h"
#include "results/ResultTables.h"
#include "results/ScriptError.h"

#include <algorithm>

namespace solvane::host {

namespace {

void printReport(std::FILE* stream, const ReportResult& report) {
    print(stream, "\nReport: " + report.name + "\n" + report.text);
    if (!report.text.ends_with('\n'))
        print(stream, "\n");
}

/// Nothing for a table without lines.
void printTable(const Table& table) {
    if (!table.lines.empty())
        print(stdout, "\n" + columns(table));
}

void printConvergence(std::FILE* stream, const RunResults& results) {
    if (results.convergence && !results.convergence->iterations.empty())
        print(stream, "\nRecycles, method \"" + results.convergence->method + "\"\n" +
                          columns(convergenceTable(*results.convergence)));
}

void printUnit(const UnitResult& unit, const Balance& balance, const TableUnits& units, bool verbose) {
    printTable(balanceTable(balance, units));
    for (const std::string& note : balanceNotes(balance, unit, units))
        print(stdout, note + "\n");
    printTable(parameterTable(unit, units));
    for (const ReportResult& report : unit.reports)
        if (verbose || report.name != outputReport)
            printReport(stdout, report);
}

void printResults(const RunResults& results, const TableUnits& units, bool verbose) {
    print(stdout, "Materials of generation " + std::string(generationName(results.generation)) + "\n");
    printTable(streamTable(results, units));
    printTable(phaseTable(results));
    for (std::size_t i = 0; i < results.units.size(); ++i) {
        if (results.isFlowsheet)
            print(stdout, "\nUnit: " + results.units[i].name + "\n");
        printUnit(results.units[i], results.balances.at(i), units, verbose);
    }
    printConvergence(stdout, results);
    const std::string warnings = warningLines(results.warnings);
    if (!warnings.empty())
        print(stdout, "\n" + warnings);
}

/// Of what a script printed before it failed, bytes; the end says more about it.
constexpr std::size_t firstPrinted = 3'000, lastPrinted = 9'000;

/// Prints what the script of the unit printed and, if it failed, its message and the place, which `error`
/// then has in place of the message.
void printFailure(RunResults& results, bool verbose, std::string& error) {
    const auto unit = std::ranges::find(results.units, UnitStatus::failed, &UnitResult::status);
    if (unit == results.units.end())
        return;
    const auto output = std::ranges::find(unit->reports, outputReport, &ReportResult::name);
    if (output == unit->reports.end())
        return;
    const std::string text =
        verbose ? output->text : abridged(printedByScript(*unit), firstPrinted, lastPrinted);
    if (!text.empty())
        printReport(stderr, {outputReport, text});
    if (!hasScriptEnded(*unit))
        results.fault = Fault::machine;
    const std::optional<ScriptError>& script = results.failure->scriptError;
    if (!script)
        return;
    print(stderr, (text.empty() ? "" : "\n") + visible(scriptErrorLine(*script)) + "\n");
    for (const std::string& caller : script->callers)
        print(stderr, "    called from " + caller + "\n");
    constexpr std::string_view failed = "Calculate failed";
    if (const std::size_t at = error.find(failed); at != error.npos)
        error = error.substr(0, at + failed.size()) + " at " + placeText(*script);
}

/// Reads the case and applies the options to it.
bool prepare(const RunOptions& options, Case& flowsheet, std::optional<Adjustment>& adjustment,
             std::string& error) {
    if (!readCase(options.casePath, flowsheet, error))
        return false;
    if (!options.generation.empty())
        flowsheet.generation =
            options.generation == generationName(Generation::v10) ? Generation::v10 : Generation::v11;
    if (!options.profile.empty())
        flowsheet.profile = *findProfile(options.profile);
    UnitParameters parameters;
    return options.adjustment.variable.empty() ||
           (readUnitParameters(flowsheet, parameters, error) &&
            readAdjustment(flowsheet, parameters, options.adjustment, adjustment.emplace(), error));
}

/// Ends the program in the middle of a run that does not end: the engine ends with it, but Matlab runs its
/// script to the end, and the units' temporary folders stay until a unit is next created. Another thread
/// still uses the run's results.
void abandonRun(const RunOptions& options, const TableUnits& units, const RunWatch& watch) {
    RunResults results;
    results.failure = {.unit = watch.unit(), .message = watch.stopText()};
    std::string ignored;
    static_cast<void>(writeResultFiles(options, results, units, ignored));
    const ExitCode code = complain(stopCode(watch.stopReason()),
                                   options.casePath + ": " + watch.stopText() + ": " + watch.place());
    TerminateProcess(GetCurrentProcess(), code);
}

/// Returns how the run was stopped if that made it fail.
StopReason calculate(const RunOptions& options, const TableUnits& units, const Case& flowsheet,
                     const std::optional<Adjustment>& adjustment, RunResults& results, std::string& error) {
    RunWatch watch({
        .limit = options.limit,
        .beat = [](const std::string& line) { print(stderr, line + "\n"); },
        .giveUp = [&](const RunWatch& stopped) { abandonRun(options, units, stopped); },
    });
    const Interrupts interrupts(watch);
    if (adjustment ? runToTarget(flowsheet, *adjustment, results, error, watch)
                   : runCase(flowsheet, printUnitLine, results, error, &watch))
        return StopReason::none;
    print(stderr, warningLines(results.warnings));
    printFailure(results, options.verbose, error);
    printConvergence(stderr, results);
    error.insert(0, options.casePath + ": ");
    return watch.stopReason();
}

} // namespace

ExitCode runCommand(const RunOptions& options) {
    Case flowsheet;
    RunResults results;
    std::string error, fileError;
    if (!removeOldResults(options, error))
        return complain(badUsage, error);
    std::optional<Adjustment> adjustment;
    const bool isRead = prepare(options, flowsheet, adjustment, error);
    const TableUnits units = options.units.empty() ? unitsOfCase(flowsheet) : unitsOfSystem(options.units);
    StopReason stopped = StopReason::none;
    if (isRead) {
        stopped = calculate(options, units, flowsheet, adjustment, results, error);
    } else {
        results.fault = Fault::model;
        results.failure.emplace().message = error;
    }
    const bool written = writeResultFiles(options, results, units, fileError);
    if (stopped != StopReason::none)
        return complain(stopCode(stopped), error);
    if (results.failure)
        return complain(results.fault, error);
    printResults(results, units, options.verbose);
    return written ? ok : complain(badUsage, fileError);
}

} // namespace solvane::host
