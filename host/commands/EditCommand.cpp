#include "HostCommands.h"

#include "cases/CaseReader.h"
#include "cases/FeedLines.h"
#include "cases/FilePath.h"
#include "com/Text.h"
#include "com/Wine.h"
#include "flowsheet/ModelStream.h"
#include "flowsheet/Streams.h"
#include "flowsheet/UnitCalls.h"
#include "flowsheet/UnitSession.h"

namespace solvane::host {

namespace {

/// A model, the file that it is saved to after a change, and the case whose streams its ports get.
struct EditedModel {
    Case flowsheet{}; ///< of one unit; without streams if no case is given
    std::filesystem::path target{};
    bool isNewFile = false;

    UnitCase& unit() { return flowsheet.units.front(); }
};

bool readCaseOfOneUnit(const std::string& path, Case& flowsheet, std::string& error) {
    if (!readCase(path, flowsheet, error))
        return false;
    if (flowsheet.isFlowsheet)
        error = path + ": the case lists units; edit the model file of one of them";
    return !flowsheet.isFlowsheet;
}

bool readModelFile(const std::filesystem::path& path, const EditOptions& options, EditedModel& model,
                   std::string& error) {
    ModelFile file{.name = pathText(path.filename())};
    if (!readFile(path, file.bytes, error))
        return false;
    model.target = path;
    model.flowsheet.units.resize(1);
    if (!options.casePath.empty()) {
        model.flowsheet = {};
        if (!readCaseOfOneUnit(options.casePath, model.flowsheet, error))
            return false;
    }
    if (!readFeedLines(options.feeds, model.flowsheet, error))
        return false;
    model.unit().progId = UnitCase().progId;
    model.unit().model = std::move(file);
    model.unit().parameters.clear(); // the case's values would change the model
    return true;
}

/// What a new unit begins with.
constexpr char newScript[] = "%Enter your Matlab calculations here\r\n\r\n\r\n";

/// A model written out in the case is not written back into it but to a file beside it. A file that already
/// exists may be earlier work.
bool readModelOfCase(const std::string& casePath, EditedModel& model, std::string& error) {
    if (!readCaseOfOneUnit(casePath, model.flowsheet, error))
        return false;
    if (std::holds_alternative<std::monostate>(model.unit().model))
        model.unit().model = UnitModel{.script = {.bytes = newScript}};
    if (const auto* file = std::get_if<ModelFile>(&model.unit().model)) {
        model.target = file->path;
        return true;
    }
    model.isNewFile = true;
    model.target = filePath(casePath).replace_extension(L".svm");
    if (std::error_code fault; std::filesystem::exists(model.target, fault)) {
        error = casePath + ": the changed model would go to " + pathText(model.target) +
                ", which exists; edit or remove that file";
        return false;
    }
    return true;
}

bool isModelFile(const std::filesystem::path& path) {
    return compareNoCase(path.extension().wstring(), L".svm") == 0;
}

/// Nobody sees the windows of a service. Under Wine they need an X display.
bool hasScreen() {
    USEROBJECTFLAGS flags{};
    if (!GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) ||
        (flags.dwFlags & WSF_VISIBLE) == 0 ||
        (isWine() && GetEnvironmentVariableW(L"DISPLAY", nullptr, 0) == 0))
        return false;
    const HWND trial =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    return trial && DestroyWindow(trial);
}

bool save(ICapeUnit* unit, const std::filesystem::path& target, std::string& error) {
    std::string bytes;
    return saveModelFile(unit, bytes, error) && writeFile(target, bytes, error);
}

/// Feeds of the command line come without products; the model's own ports get a stream each.
bool addProducts(ICapeUnit* unit, UnitCase& unitCase, std::string& error) {
    std::vector<std::string> feeds, products;
    if (!readPorts(unit, feeds, products, error))
        return false;
    for (const std::string& name : products)
        unitCase.products.push_back({name, name});
    return true;
}

/// Connects what the model and the case have in common: a model in the making may lack ports.
void connectStreams(ICapeUnit* unit, const std::vector<Connection>& connections) {
    for (const Connection& connection : connections)
        if (std::string error; !connectPorts(unit, {connection}, error))
            print(stderr, "warning: the stream is not connected: " + error + "\n");
}

/// Opens the window. It opens again if the model cannot be saved, so that no work is lost, until the model
/// can be saved or the user makes no more changes.
ExitCode edit(ICapeUnit* unit, const EditedModel& model) {
    const auto utilities = queryInterface<ICapeUtilities>(unit);
    for (std::string unsaved;;) {
        const HRESULT result = utilities->Edit();
        if (FAILED(result))
            return complain(calculationFailed, callFailure("Edit", unit, result));
        if (result == S_FALSE && !unsaved.empty())
            return complain(calculationFailed, "the changes are not saved");
        if (result == S_FALSE) {
            print(stdout, "Nothing was changed.\n");
            return ok;
        }
        if (save(unit, model.target, unsaved))
            break;
        complain(calculationFailed, unsaved + "\nThe window opens again, so that you can correct the model.");
    }
    const std::string name = pathText(model.target.filename());
    print(stdout, "Saved the model to " + pathText(model.target) + "\n");
    if (model.isNewFile)
        print(stdout,
              "The case file is unchanged; set \"model\": \"" + name + "\" in it to use this model.\n");
    return ok;
}

} // namespace

ExitCode editCommand(const EditOptions& options) {
    EditedModel model;
    std::string error;
    const std::filesystem::path path = filePath(options.path);
    if (!(options.casePath.empty() && options.feeds.empty()) && !isModelFile(path))
        return complain(badUsage, options.path + (options.feeds.empty() ? ": --with" : ": --feed") +
                                      " goes with a model file (.svm); a case has its own streams");
    if (!(isModelFile(path) ? readModelFile(path, options, model, error)
                            : readModelOfCase(options.path, model, error)))
        return complain(badUsage, error);
    if (!hasScreen())
        return complain(
            calculationFailed,
            "there is no screen to show the unit's window on: run this from a desktop, not from a service" +
                std::string(isWine() ? "; under Wine, set DISPLAY" : ""));
    const auto habits = std::make_shared<MaterialHabits>();
    habits->rules = model.flowsheet.profile.materials;
    UnitSession session(model.unit(), model.flowsheet.profile);
    if (!session.start([&](std::string_view line) { printUnitLine(model.unit().name, line); }, error))
        return complain(session.fault(), options.path + ": " + error);
    if (!options.feeds.empty() && !addProducts(session.unit(), model.unit(), error))
        return complain(calculationFailed, options.path + ": " + error);
    std::vector<Stream> streams;
    if (!makeStreams(model.flowsheet, habits, streams, error))
        return complain(calculationFailed, options.path + ": " + error);
    connectStreams(session.unit(), connectionsOf(model.unit(), streams));
    return edit(session.unit(), model);
}

} // namespace solvane::host
