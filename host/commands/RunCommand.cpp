#include "HostCommands.h"

#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "flowsheet/UnitCalls.h"
#include "flowsheet/UnitRunner.h"
#include "results/ResultsJson.h"
#include "results/ResultsText.h"
#include "results/ScriptError.h"

namespace solvane::host {

namespace {

void printReport(std::FILE* stream, const ReportResult& report) {
    print(stream, "\nReport: " + report.name + "\n" + report.text);
    if (!report.text.ends_with('\n'))
        print(stream, "\n");
}

void printUnit(const UnitResult& unit, const Balance& balance, bool verbose) {
    print(stdout, "\n" + balanceTable(balance));
    const std::string outputs = outputParameterLines(unit);
    if (!outputs.empty())
        print(stdout, "\nOutput parameters\n" + outputs);
    for (const ReportResult& report : unit.reports)
        if (verbose || report.name != outputReport)
            printReport(stdout, report);
}

void printResults(const RunResults& results, bool verbose) {
    print(stdout, "Materials of generation " + std::string(generationName(results.generation)) + "\n\n");
    print(stdout, streamTable(results));
    for (std::size_t i = 0; i < results.units.size(); ++i) {
        if (results.isFlowsheet)
            print(stdout, "\nUnit: " + results.units[i].name + "\n");
        printUnit(results.units[i], results.balances.at(i), verbose);
    }
    const std::string warnings = warningLines(results.warnings);
    if (!warnings.empty())
        print(stdout, "\n" + warnings);
}

} // namespace

ExitCode runCommand(const RunOptions& options) {
    Case flowsheet;
    std::string error;
    if (!readCase(options.casePath, flowsheet, error))
        return complain(badUsage, error);
    if (!options.generation.empty())
        flowsheet.generation =
            options.generation == generationName(Generation::v10) ? Generation::v10 : Generation::v11;
    if (!options.profile.empty())
        flowsheet.profile = *findProfile(options.profile);

    RunResults results;
    if (!runCase(flowsheet, printUnitLine, results, error)) {
        if (const auto scriptError = findScriptError(flowsheet, results))
            print(stderr, scriptErrorLine(*scriptError) + "\n");
        if (!results.units.empty())
            for (const ReportResult& report : results.units.back().reports)
                if (report.name == outputReport) {
                    printReport(stderr, report);
                    if (report.text.find(outputEnd) == std::string::npos)
                        results.fault = Fault::machine;
                }
        return complain(results.fault, options.casePath + ": " + error);
    }
    printResults(results, options.verbose);
    if (!options.jsonPath.empty() && !writeFile(filePath(options.jsonPath), resultsJson(results), error))
        return complain(badUsage, error);
    return ok;
}

} // namespace solvane::host
