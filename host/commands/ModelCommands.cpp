#include "HostCommands.h"

#include "NewFolder.h"
#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "flowsheet/ModelDescription.h"
#include "flowsheet/ModelDifference.h"
#include "flowsheet/ModelStream.h"
#include "flowsheet/UnitSession.h"
#include "flowsheet/UnpackedModel.h"

#include <algorithm>

namespace solvane::host {

namespace {

/// Starts a unit that is created only for its model, in the order of the standard.
bool start(UnitSession& session, const UnitCase& unit, std::string& error) {
    return session.start([&](std::string_view line) { printUnitLine(unit.name, line); }, error);
}

bool isAscii(const std::string& name) {
    return std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// A model file stores names in the code page of the machine that writes it.
void warnOfNames(ICapeUnit* unit, const std::string& modelPath) {
    ModelDescription description;
    std::string error;
    if (!describeModel(unit, description, error))
        return; // the file is written nevertheless
    for (const ModelFile& file : description.model.files)
        if (!isAscii(file.name))
            print(stderr, "warning: " + modelPath + ": the name of the file \"" + file.name +
                              "\" has letters beyond ASCII, which another machine may misread; rename "
                              "the file, also in the script\n");
}

ExitCode describeFile(const std::string& path, ModelDescription& description) {
    UnitCase unit;
    auto& file = unit.model.emplace<ModelFile>();
    file.name = path;
    std::string error;
    if (!readFile(filePath(path), file.bytes, error))
        return complain(badUsage, error);
    UnitSession session(unit, profiles.front());
    if (!start(session, unit, error))
        return complain(session.fault(), error);
    if (!describeModel(session.unit(), description, error))
        return complain(badUsage, error);
    return ok;
}

} // namespace

ExitCode saveCommand(const SaveOptions& options) {
    Case flowsheet;
    std::string error, bytes;
    if (!readCase(options.casePath, flowsheet, error))
        return complain(badUsage, error);
    const UnitCase& unit = flowsheet.units.front();
    const auto reject = [&](const std::string& why) {
        return complain(badUsage, options.casePath + ": " + why);
    };
    if (flowsheet.isFlowsheet)
        return reject("the case lists units; a model file holds the model of a case of one unit");
    if (std::holds_alternative<std::monostate>(unit.model))
        return reject("the case has no \"model\" to save");
    UnitSession session(unit, profiles.front());
    if (!start(session, unit, error))
        return complain(session.fault(), options.casePath + ": the model cannot be saved: " + error);
    if (!saveModelFile(session.unit(), bytes, error))
        return reject("the model cannot be saved: " + error);
    if (!writeFile(filePath(options.modelPath), bytes, error))
        return complain(badUsage, error);
    warnOfNames(session.unit(), options.modelPath);
    return ok;
}

ExitCode showCommand(const ShowOptions& options) {
    ModelDescription description;
    if (const ExitCode code = describeFile(options.modelPath, description); code != ok)
        return code;
    print(stdout, options.json ? modelJson(description) : modelText(description));
    return ok;
}

ExitCode unpackCommand(const UnpackOptions& options) {
    ModelDescription description;
    std::string error;
    if (const ExitCode code = describeFile(options.modelPath, description); code != ok)
        return code;
    if (!writeNewFolder(options.folder, unpackModel(description), error))
        return complain(badUsage, error);
    const std::string made = pathIn(options.folder, "case.json");
    print(stdout, "Made " + made + ", with example feeds: change its compounds and feeds\n");
    return ok;
}

ExitCode diffCommand(const DiffOptions& options) {
    std::vector<std::vector<ModelSection>> models;
    for (const std::string& path : options.modelPaths) {
        ModelDescription description;
        if (const ExitCode code = describeFile(path, description); code != ok)
            return badUsage; // 1 stands for a difference
        models.push_back(modelSections(description));
    }
    if (models.size() == 1) {
        print(stdout, sectionsText(models.front()));
        return ok;
    }
    const std::string difference = modelDifference(models.front(), models.back());
    if (difference.empty())
        return ok;
    print(stdout,
          "--- " + options.modelPaths.front() + "\n+++ " + options.modelPaths.back() + "\n" + difference);
    return calculationFailed;
}

} // namespace solvane::host
