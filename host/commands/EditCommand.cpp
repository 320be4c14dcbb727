#include "HostCommands.h"

#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "com/Text.h"
#include "com/Wine.h"
#include "flowsheet/ModelStream.h"
#include "flowsheet/UnitCalls.h"
#include "flowsheet/UnitSession.h"

namespace solvane::host {

namespace {

/// A model, and the file that it is saved to after a change.
struct EditedModel {
    UnitCase unit{};
    Profile profile = profiles.front();
    std::filesystem::path target{};
    bool isNewFile = false;
};

bool readModelFile(const std::filesystem::path& path, EditedModel& model, std::string& error) {
    model.target = path;
    auto& file = model.unit.model.emplace<ModelFile>();
    file.name = pathText(path.filename());
    return readFile(path, file.bytes, error);
}

/// A model written out in the case is not written back into it but to a file beside it. A file that already
/// exists may be earlier work.
bool readModelOfCase(const std::string& casePath, EditedModel& model, std::string& error) {
    Case flowsheet;
    if (!readCase(casePath, flowsheet, error))
        return false;
    if (flowsheet.isFlowsheet) {
        error = casePath + ": the case lists units; edit the model file of one of them";
        return false;
    }
    model.unit = std::move(flowsheet.units.front());
    model.profile = flowsheet.profile;
    if (const auto* file = std::get_if<ModelFile>(&model.unit.model)) {
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
    if (!(isModelFile(path) ? readModelFile(path, model, error)
                            : readModelOfCase(options.path, model, error)))
        return complain(badUsage, error);
    if (!hasScreen())
        return complain(
            calculationFailed,
            "there is no screen to show the unit's window on: run this from a desktop, not from a service" +
                std::string(isWine() ? "; under Wine, set DISPLAY" : ""));
    UnitSession session(model.unit, model.profile);
    if (!session.start([&](std::string_view line) { printUnitLine(model.unit.name, line); }, error))
        return complain(session.fault(), options.path + ": " + error);
    return edit(session.unit(), model);
}

} // namespace solvane::host
