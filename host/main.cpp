// SolvaneHost: runs a unit operation in a small flowsheet, from the command line.
#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "com/Module.h"
#include "com/Text.h"
#include "flowsheet/InterfaceRegistration.h"
#include "flowsheet/ResultsJson.h"
#include "flowsheet/ResultsText.h"
#include "flowsheet/UnitRunner.h"

#include <CLI/CLI.hpp>

#include <shellapi.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace solvane::host {

namespace {

enum ExitCode { ok = 0, calculationFailed = 1, badUsage = 2 };

/// The report that every unit of ours has beside the script's own: what Matlab printed.
constexpr char outputReport[] = "Matlab Output";

struct RunOptions {
    std::string casePath;
    std::string generation;
    std::string profile;
    std::string jsonPath;
    bool verbose = false;
};

void print(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

int complain(ExitCode code, const std::string& error) {
    print(stderr, "error: " + error + "\n");
    return code;
}

void printReport(std::FILE* stream, const ReportResult& report) {
    print(stream, "\nReport: " + report.name + "\n" + report.text);
    if (!report.text.ends_with('\n'))
        print(stream, "\n");
}

void printResults(const RunResults& results, bool verbose) {
    print(stdout, "Materials of generation " + std::string(generationName(results.generation)) + "\n\n");
    print(stdout, streamTable(results));
    const std::string outputs = outputParameterLines(results);
    if (!outputs.empty())
        print(stdout, "\nOutput parameters\n" + outputs);
    for (const ReportResult& report : results.reports)
        if (verbose || report.name != outputReport)
            printReport(stdout, report);
}

int runCommand(const RunOptions& options) {
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
    const LogSink log = [&](std::string_view line) {
        print(stderr, "[" + flowsheet.unitName + "] " + std::string(line) + "\n");
    };
    if (!runCase(flowsheet, log, results, error)) {
        for (const ReportResult& report : results.reports)
            if (report.name == outputReport)
                printReport(stderr, report);
        return complain(calculationFailed, error);
    }
    printResults(results, options.verbose);
    if (!options.jsonPath.empty() && !writeFile(filePath(options.jsonPath), resultsJson(results), error))
        return complain(badUsage, error);
    return ok;
}

int registerCommand(bool unregister) {
    std::string report, error;
    const bool done = unregister ? unregisterInterfaces(report, error) : registerInterfaces(report, error);
    if (!done)
        return complain(calculationFailed, error);
    print(stdout, report + "\n");
    return ok;
}

std::string profileHelp() {
    std::string text = "In which order the unit is called, instead of the case's profile:";
    for (const Profile& profile : profiles)
        text.append("\n").append(profile.name).append(": ").append(profile.summary);
    return text;
}

/// The command line's words in UTF-8, from the last to the first, as CLI11 takes them.
std::vector<std::string> commandLineWords() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = count - 1; i > 0; --i)
        result.push_back(narrow(words[i], CP_UTF8));
    LocalFree(words);
    return result;
}

int runProgram() {
    CLI::App app("Runs a CAPE-OPEN unit operation in a small flowsheet.", "SolvaneHost");
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a case may be an absolute Unix path
    app.set_version_flag("--version", std::string("SolvaneHost " SOLVANE_VERSION));
    app.footer("Exit codes: 0 success, 1 the calculation failed, 2 a bad command line or case.");

    RunOptions run;
    auto* runApp = app.add_subcommand("run", "Calculate a case and print its streams and reports");
    runApp->add_option("case", run.casePath, "The case file (see \"SolvaneHost help-case\")")->required();
    runApp->add_option("--generation", run.generation, "Of the materials, instead of the case's: 1.0 or 1.1")
        ->check(CLI::IsMember({"1.0", "1.1"}));
    std::vector<std::string> profileNames;
    for (const Profile& profile : profiles)
        profileNames.emplace_back(profile.name);
    runApp->add_option("--profile", run.profile, profileHelp())->check(CLI::IsMember(profileNames));
    runApp->add_option("--json", run.jsonPath, "Write the results to this file as well");
    runApp->add_flag("--verbose", run.verbose, "Print what Matlab printed too");

    bool unregister = false;
    auto* registerApp = app.add_subcommand(
        "register-interfaces",
        "Register the CAPE-OPEN type library for all users, which calls between threads and processes need");
    registerApp->add_flag("--unregister", unregister, "Remove the registration instead");

    auto* helpApp = app.add_subcommand("help-case", "Print the format of case files");

    try {
        app.parse(commandLineWords());
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? ok : badUsage;
    }
    if (runApp->parsed())
        return runCommand(run);
    if (registerApp->parsed())
        return registerCommand(unregister);
    if (helpApp->parsed())
        print(stdout, caseFormatText());
    return ok;
}

} // namespace

} // namespace solvane::host

int main() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    const UINT consoleCodePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    solvane::ComModule module;
    const HRESULT entered = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int result = solvane::host::runProgram();
    if (SUCCEEDED(entered))
        CoUninitialize();
    SetConsoleOutputCP(consoleCodePage); // the console outlives the program
    return result;
}
