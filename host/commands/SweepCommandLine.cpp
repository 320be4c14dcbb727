#include "SweepCommandLine.h"

#include "results/TableUnits.h"

#include <CLI/CLI.hpp>

namespace solvane::host {

namespace {

constexpr char variableHelp[] =
    "VARIABLE=VALUES, for each variable once.\n"
    "Variables: a parameter (UNIT.PARAMETER if the case lists its units), and STREAM.temperature, .pressure, "
    ".vaporFraction, .flow or .x(COMPOUND) of a feed.\n"
    "Values: \"2 bar:20 bar:10\" (ten from 2 to 20), \"1:1000:4:log\", or a list \"10,50\"; without a unit "
    "in "
    "SI units";

constexpr char exitCodes[] =
    "Exit codes:\n"
    "  0    all points succeeded\n"
    "  1    some failed; their rows say why\n"
    "  2    a bad command line, case, design or table; nothing was calculated\n"
    "  130  interrupted: Ctrl-C, Ctrl-Break or the closing of the console stopped the study; its rows stay";

void addDesign(CLI::App& command, SweepOptions& sweep) {
    auto* vary =
        command.add_option("--vary", sweep.design.axes, variableHelp)->type_name("TEXT")->expected(1);
    vary->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    auto* file = command.add_option("--design", sweep.designPath,
                                    "Read the points from this CSV file instead: a column for each variable, "
                                    "such as \"Feed.flow (kmol/h)\"");
    auto* grid = command.add_flag_callback(
        "--grid", [&] { sweep.design.arrangement = Arrangement::grid; },
        "All combinations of the values, the last variable fastest (the default)");
    auto* zip = command.add_flag_callback(
        "--zip", [&] { sweep.design.arrangement = Arrangement::zip; },
        "The first values of all variables, the second values, and so on");
    const auto sample = [&](Arrangement arrangement) {
        return [&sweep, arrangement](const std::size_t& count) {
            sweep.design.arrangement = arrangement;
            sweep.design.count = count;
        };
    };
    auto* random = command.add_option_function<std::size_t>("--random", sample(Arrangement::random),
                                                            "That many random points in ranges FIRST:LAST");
    auto* latin = command.add_option_function<std::size_t>(
        "--latin", sample(Arrangement::latin),
        "That many points of a Latin hypercube: each variable has one in each of as many equal parts");
    command.add_option("--seed", sweep.design.seed, "Of the random points; the same gives the same points");
    const std::vector<CLI::Option*> exclusive{file, grid, zip, random, latin};
    for (std::size_t i = 0; i < exclusive.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            exclusive[i]->excludes(exclusive[k]);
    file->excludes(vary);
    random->check(CLI::PositiveNumber);
    latin->check(CLI::PositiveNumber);
}

void addOutput(CLI::App& command, SweepOptions& sweep) {
    auto* csv = command.add_option(
        "--csv", sweep.csvPath,
        "Write the table to this file instead of the standard output, each row as soon as it is known");
    command.add_option("--json", sweep.jsonPath, "Also write the table to this JSON file");
    auto* plot =
        command.add_option("--plot", sweep.plotPath,
                           "Also draw a result over one or two variables, by gnuplot, as .svg or .png");
    command
        .add_option("--plot-of", sweep.plotOf,
                    "The result to draw, such as Product.temperature, instead of the first output parameter")
        ->needs(plot);
    command
        .add_flag("--plot-script", sweep.plotScript, "Also write gnuplot's script, with the data, as FILE.gp")
        ->needs(plot);
    command
        .add_option(
            "--units", sweep.units,
            "Units of the results: si, metric or field, instead of those in which the case states its "
            "feeds")
        ->check(CLI::IsMember(std::vector<std::string>(unitSystems.begin(), unitSystems.end())));
    command.add_option("--jobs", sweep.jobs,
                       "Processes that calculate, each with Matlab of its own; without it, one per core");
    command
        .add_option("--limit", sweep.limit, "Let a point fail that takes longer than this time, in seconds")
        ->check(CLI::Range(0.001, 1e9));
    command.add_option("--shard", sweep.shard,
                       "Calculate a part only, such as 3/16; \"sweep merge\" puts the parts together");
    auto* resume = command.add_flag(
        "--resume", sweep.resume, "Keep the rows that the table of this study has, and calculate the others");
    resume->needs(csv);
    command.add_flag("--retry", sweep.retry, "With --resume, calculate points again that failed")
        ->needs(resume);
}

void addMerge(CLI::App& command, MergeOptions& merge, ExitCode& result) {
    auto* sub = command.add_subcommand("merge", "Put the tables of all shards of a study together, in order");
    sub->add_option("table", merge.csvPath, "The table to write")->required();
    sub->add_option("parts", merge.partPaths, "The tables of the shards; * and ? may stand in a name")
        ->required();
    sub->final_callback([&] { result = mergeCommand(merge); });
}

} // namespace

void addSweep(CLI::App& app, SweepCommandLine& line, ExitCode& result) {
    auto* command = app.add_subcommand("sweep", "Calculate a case at many points, and write a table");
    auto* path =
        command->add_option("case", line.sweep.casePath, "The case file (see \"SolvaneHost help-case\")");
    addDesign(*command, line.sweep);
    addOutput(*command, line.sweep);
    addMerge(*command, line.merge, result);
    command->footer(exitCodes);
    command->final_callback([&, command, path] {
        if (command->got_subcommand("merge"))
            return;
        if (path->empty())
            throw CLI::RequiredError("case");
        if (line.sweep.design.axes.empty() && line.sweep.designPath.empty())
            throw CLI::RequiredError("--vary or --design");
        result = sweepCommand(line.sweep);
    });

    auto* serve = app.add_subcommand("serve")->group(""); // hidden: sweep starts it
    serve->add_option("case", line.serve.casePath)->required();
    serve->add_option("--limit", line.serve.limit);
    serve->final_callback([&] { result = serveCommand(line.serve); });
}

} // namespace solvane::host
