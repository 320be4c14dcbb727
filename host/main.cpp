// SolvaneHost: runs unit operations in a small flowsheet, from the command line.
#include "cases/CaseReader.h"
#include "com/LocalMemory.h"
#include "com/Module.h"
#include "com/Text.h"
#include "commands/HostCommands.h"
#include "commands/RunCommandLine.h"
#include "commands/SweepCommandLine.h"
#include "flowsheet/MessageBoxes.h"

#include <CLI/CLI.hpp>

#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include <optional>

namespace solvane::host {

namespace {

/// An unknown command is reported as such, not as a missing one.
std::string usageFault(const CLI::App* app, const CLI::Error& fault) {
    const std::vector<const CLI::App*> commands = app->get_subcommands(nullptr);
    const auto given = std::ranges::find_if(commands, [](const CLI::App* one) { return one->parsed(); });
    if (given != commands.end())
        return std::string("error: ") + fault.what() + "\nSee \"SolvaneHost " + (*given)->get_name() +
               " --help\".\n";
    const std::vector<std::string> strangers = app->remaining();
    return "error: " +
           (strangers.empty() ? "a command is missing" : "unknown command \"" + strangers.front() + "\"") +
           "\nSee \"SolvaneHost --help\".\n";
}

/// The command line's words in UTF-8, last to first, the order that CLI11 expects.
std::vector<std::string> commandLineWords() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    const LocalMemory owner(static_cast<void*>(words));
    std::vector<std::string> result;
    for (int i = count - 1; i > 0; --i)
        result.push_back(narrow(words[i], CP_UTF8));
    return result;
}

void addCheck(CLI::App& app, CheckOptions& check, ExitCode& result) {
    auto* command = app.add_subcommand(
        "check", "Check whether the model of a case is fit for a flowsheet, and print what to mend");
    command->add_option("case", check.casePath, "The case file (see \"SolvaneHost help-case\")")->required();
    command->add_option("--json", check.jsonPath, "Also write the findings to this JSON file");
    command
        ->add_option(
            "--limit", check.limit,
            "Stop each run that takes longer than this time, in seconds, which is then a finding with the "
            "line at which the script was")
        ->check(CLI::Range(0.001, 1e9));
    command->footer(
        "Runs the case again and again: on a new unit, with both generations of materials, as all profiles, "
        "with the compounds in another order, without one of them, without flow, with feeds in one phase, "
        "with feeds that differ a little; and looks at balances and at what the script leaves behind. Takes "
        "some 50 runs. A check of more than ten seconds prints a line every ten seconds: which run it is, "
        "and "
        "its last log line. Ctrl-C stops the check, with the script's line.\n\nExit codes: 0 nothing found, "
        "1 something found, 2 a bad command line or case.");
    command->final_callback([&] { result = checkCommand(check); });
}

void addSave(CLI::App& app, SaveOptions& save, ExitCode& result) {
    auto* command = app.add_subcommand(
        "save", "Write the model of a case of one unit to a model file, as the unit itself saves it");
    command->add_option("case", save.casePath, "The case file (see \"SolvaneHost help-case\")")->required();
    command->add_option("-o,--output", save.modelPath, "The model file (.svm)")->required();
    command->final_callback([&] { result = saveCommand(save); });
}

void addUnpack(CLI::App& app, UnpackOptions& unpack, ExitCode& result) {
    auto* command = app.add_subcommand(
        "unpack",
        "Write a model file as a folder with a case, model.json, the script and the files; \"save\" "
        "makes the same model of it");
    command->add_option("model", unpack.modelPath, "The model file (.svm)")->required();
    command->add_option("-o,--output", unpack.folder, "The folder to make, which must not exist")->required();
    command->final_callback([&] { result = unpackCommand(unpack); });
}

void addDiff(CLI::App& app, DiffOptions& diff, ExitCode& result) {
    auto* command = app.add_subcommand(
        "diff", "Print what differs between two model files: parameters, lines of the script, files");
    command
        ->add_option("models", diff.modelPaths,
                     "Two model files (.svm), or one, which is printed as the text that is compared")
        ->required()
        ->expected(1, 2);
    command->footer("Exit codes: 0 equal, 1 different, 2 a model cannot be read.\n"
                    "In a git repository, differences of model files show as text after\n"
                    "  git config diff.svm.textconv \"SolvaneHost diff\"\n"
                    "with a line \"*.svm diff=svm\" in the file .gitattributes.");
    command->final_callback([&] { result = diffCommand(diff); });
}

void addNew(CLI::App& app, NewOptions& options, ExitCode& result) {
    auto* command =
        app.add_subcommand("new", "Make a folder with a case and its script from the library of models");
    auto* list = command->add_flag("--list", options.list, "Print the names of the models instead");
    auto* model = command->add_option("model", options.model, "A model of the library, such as compressor");
    auto* folder =
        command->add_option("-o,--output", options.folder, "The folder to make, which must not exist");
    model->excludes(list)->needs(folder);
    folder->needs(model);
    command->final_callback([&, list, model] {
        if (list->empty() && model->empty())
            throw CLI::RequiredError("model");
        result = newCommand(options);
    });
}

void addShow(CLI::App& app, ShowOptions& show, ExitCode& result) {
    auto* command = app.add_subcommand(
        "show", "Print what is in a model file: ports, parameters, reports, files and script");
    command->add_option("model", show.modelPath, "The model file (.svm)")->required();
    command->add_flag("--json", show.json, "Print it as a JSON document");
    command->final_callback([&] { result = showCommand(show); });
}

/// The user at the screen answers message boxes, so the automatic answers end.
void addEdit(CLI::App& app, EditOptions& edit, std::optional<MessageBoxes>& boxes, ExitCode& result) {
    auto* command = app.add_subcommand("edit", "Open the unit's window on a model and save the changes");
    command
        ->add_option("model", edit.path,
                     "The model file (.svm), or the case file of one unit: the model is then saved to the "
                     "model file that the case names, or to a new one next to the case")
        ->required();
    auto* with = command->add_option(
        "--with", edit.casePath,
        "A case file of one unit: its streams are connected to the model file's ports, so that "
        "\"Test\" runs the script on them. The streams of a case are always connected");
    auto* feed = command->add_option(
        "--feed", edit.feeds,
        "A stream for a feed port of the model file, with the keys of a case, such as \"name=Feed, "
        "temperature=350 K, pressure=2 bar, flow=10 mol/s, composition=methane:0.5;ethane:0.5\". For each "
        "feed once; all products get a stream");
    feed->type_name("TEXT")->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    feed->excludes(with);
    command->final_callback([&] {
        boxes.reset();
        result = editCommand(edit);
    });
}

void addRegister(CLI::App& app, bool& unregister, ExitCode& result) {
    auto* command = app.add_subcommand(
        "register-interfaces",
        "Register the CAPE-OPEN type library, which calls between threads and processes need, for all users");
    command->add_flag("--unregister", unregister, "Remove the registration instead");
    command->final_callback([&] { result = registerCommand(unregister); });
}

void addDoctor(CLI::App& app, ExitCode& result) {
    auto* command = app.add_subcommand("doctor", "Check step by step what the unit needs on this machine");
    command->footer(
        "Checks the unit's registration and files, the type libraries, the temporary folder, and Matlab or "
        "its replacement; starts it, starts the unit and runs a one-line script. Each fault comes with a "
        "remedy. Takes about twice as long as Matlab takes to start.\n\n" +
        std::string(exitCodesText));
    command->final_callback([&] { result = doctorCommand(); });
}

ExitCode runProgram() {
    CLI::App app("Runs CAPE-OPEN unit operations in a small flowsheet.", "SolvaneHost");
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a case may be an absolute Unix path
    app.set_version_flag("--version", std::string("SolvaneHost " SOLVANE_VERSION));
    app.footer(exitCodesText);
    app.failure_message(usageFault);

    ExitCode result = ok;
    RunOptions run;
    SweepCommandLine sweep;
    CheckOptions check;
    SaveOptions save;
    NewOptions fresh;
    UnpackOptions unpack;
    DiffOptions diff;
    ShowOptions show;
    EditOptions edit;
    bool unregister = false;
    std::optional<MessageBoxes> boxes(std::in_place, [](const std::string& title, const std::string& text) {
        print(stderr, title + " " + text + (text.ends_with('\n') ? "" : "\n"));
    });
    addRun(app, run, result);
    addSweep(app, sweep, result);
    addCheck(app, check, result);
    addSave(app, save, result);
    addNew(app, fresh, result);
    addUnpack(app, unpack, result);
    addDiff(app, diff, result);
    addShow(app, show, result);
    addEdit(app, edit, boxes, result);
    addRegister(app, unregister, result);
    addDoctor(app, result);
    app.add_subcommand("help-case", "Print the format of case files")->final_callback([] {
        print(stdout, caseFormatText());
    });
    try {
        app.parse(commandLineWords());
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? ok : badUsage;
    }
    return result;
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
