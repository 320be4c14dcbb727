#include "RunCommandLine.h"

#include "cases/Profile.h"
#include "results/TableUnits.h"

#include <CLI/CLI.hpp>

namespace solvane::host {

namespace {

std::string profileHelp() {
    std::string text = "How the host calls the unit, instead of the case's profile:";
    for (const Profile& profile : profiles)
        text.append("\n").append(profile.name).append(": ").append(profile.summary);
    return text;
}

void addTarget(CLI::App& command, AdjustmentRequest& adjustment) {
    auto* adjust = command.add_option(
        "--adjust", adjustment.variable,
        "VARIABLE=FIRST:LAST, such as \"outlet pressure=2 bar:20 bar\": run the case again and again, and "
        "find the value between these that gives the output of --target its value. The variables are those "
        "of \"sweep\"");
    auto* target = command.add_option(
        "--target", adjustment.target,
        "OUTPUT=VALUE, such as \"shaft power=600 kW\" or Product.temperature=350: an output parameter "
        "(UNIT.PARAMETER if the case lists its units), or STREAM.temperature, .pressure, .flow, "
        ".vaporFraction or .x(COMPOUND)");
    adjust->needs(target);
    target->needs(adjust);
    command
        .add_option("--target-tolerance", adjustment.tolerance,
                    "How close the output must come, in parts of its target; if that is 0, in parts of the "
                    "larger output at the ends")
        ->check(CLI::Range(0.0, 1.0))
        ->capture_default_str()
        ->needs(target);
    command.add_option("--trials", adjustment.limit, "The most runs to find the target")
        ->check(CLI::Range(2, 10'000))
        ->capture_default_str()
        ->needs(target);
}

} // namespace

void addRun(CLI::App& app, RunOptions& run, ExitCode& result) {
    auto* command = app.add_subcommand("run", "Calculate a case and print its streams and reports");
    command->add_option("case", run.casePath, "The case file (see \"SolvaneHost help-case\")")->required();
    command
        ->add_option("--generation", run.generation,
                     "CAPE-OPEN thermodynamics version of the materials, instead of the case's")
        ->check(CLI::IsMember({"1.0", "1.1"}));
    std::vector<std::string> profileNames;
    for (const Profile& profile : profiles)
        profileNames.emplace_back(profile.name);
    command->add_option("--profile", run.profile, profileHelp())->check(CLI::IsMember(profileNames));
    command
        ->add_option(
            "--units", run.units,
            "Units of the tables: si, metric (degC, bar, kmol/h) or field (degF, psi, lbmol/h), instead "
            "of those in which the case states its feeds")
        ->check(CLI::IsMember(std::vector<std::string>(unitSystems.begin(), unitSystems.end())));
    command->add_option(
        "--json", run.jsonPath,
        "Also write the results to this JSON file, in SI units; a failed run writes the error "
        "and what is known");
    command->add_option(
        "--csv", run.csvPath,
        "Also write the streams to this file, comma-separated, in the units of the tables and "
        "with all digits");
    command->add_option("--html", run.htmlPath,
                        "Also write a page for the browser: the flowsheet, the tables, reports and warnings");
    command->add_option("--reports", run.reportFolder,
                        "Also write each report to a text file in this folder");
    command->add_flag("--verbose", run.verbose,
                      "Also print the report \"Matlab Output\": what the script printed");
    command->add_option("--limit", run.limit, "Stop a run that takes longer than this time, in seconds")
        ->check(CLI::Range(0.001, 1e9));
    addTarget(*command, run.adjustment);
    command->footer(
        "A run of more than ten seconds prints a line every ten seconds: what runs, and its last log line. "
        "Ctrl-C and --limit stop the run: the script's next call of the unit fails, with its line, or half a "
        "second later its next statement; Octave ends if the script still goes on. A second Ctrl-C ends the "
        "program at once. Matlab stops only at such a "
        "call: without one the program ends after two seconds, Matlab runs its script to the end, and the "
        "units' temporary folders stay until a unit is next created.\n\n" +
        std::string(exitCodesText));
    command->final_callback([&] { result = runCommand(run); });
}

} // namespace solvane::host
