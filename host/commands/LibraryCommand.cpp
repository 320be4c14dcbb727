#include "HostCommands.h"

#include "NewFolder.h"
#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "com/Module.h"
#include "results/TextTable.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace solvane::host {

namespace {

constexpr char caseFile[] = "case.json";

/// The library is a folder beside the program, with a folder for each model.
std::filesystem::path libraryFolder() {
    return ComModule::current().pathBeside(L"models");
}

std::vector<std::string> modelNames() {
    std::vector<std::string> names;
    std::error_code fault;
    for (const auto& entry : std::filesystem::directory_iterator(libraryFolder(), fault))
        if (std::filesystem::exists(entry.path() / caseFile, fault))
            names.push_back(pathText(entry.path().filename()));
    std::ranges::sort(names);
    return names;
}

/// A case with its model, as the library has it.
struct LibraryModel {
    std::string caseText;
    UnitModel model;
};

bool readLibraryModel(const std::string& name, LibraryModel& result, std::string& error) {
    const std::filesystem::path path = libraryFolder() / filePath(name) / caseFile;
    Case flowsheet;
    if (!readFile(path, result.caseText, error) || !readCase(pathText(path), flowsheet, error))
        return false;
    auto* model = std::get_if<UnitModel>(&flowsheet.units.front().model);
    if (!model) {
        error = pathText(path) + ": the model is not written out";
        return false;
    }
    result.model = std::move(*model);
    return true;
}

/// The first line of a script, without the sign of a comment.
std::string summary(const std::string& script) {
    const std::string line = script.substr(0, script.find_first_of("\r\n"));
    return line.substr(std::min(line.find_first_not_of("% "), line.size()));
}

/// Makes the path of a file that models share a plain name.
void makePlain(std::string& caseText, const std::string& name) {
    const std::string ending = "/" + name + "\"";
    for (std::size_t end; (end = caseText.find(ending)) != std::string::npos;) {
        const std::size_t start = caseText.rfind('"', end) + 1;
        caseText.erase(start, end + 1 - start);
    }
}

ExitCode listLibrary() {
    std::vector<Line> lines;
    for (const std::string& name : modelNames()) {
        LibraryModel model;
        std::string error;
        if (!readLibraryModel(name, model, error))
            return complain(badUsage, error);
        lines.push_back({name, summary(model.model.script.bytes)});
    }
    if (lines.empty())
        return complain(badUsage, "there are no models in " + pathText(libraryFolder()));
    print(stdout, columns(lines, 2));
    return ok;
}

} // namespace

ExitCode newCommand(const NewOptions& options) {
    if (options.list)
        return listLibrary();
    const std::vector<std::string> names = modelNames();
    if (std::ranges::find(names, options.model) == names.end())
        return complain(badUsage, "the library has no model \"" + options.model +
                                      "\"; \"SolvaneHost new --list\" shows its models");
    LibraryModel model;
    std::string error;
    if (!readLibraryModel(options.model, model, error))
        return complain(badUsage, error);

    std::vector<ModelFile> files{std::move(model.model.script)};
    std::ranges::move(model.model.files, std::back_inserter(files));
    for (const ModelFile& file : files)
        makePlain(model.caseText, file.name);
    files.push_back({caseFile, model.caseText});
    if (!writeNewFolder(options.folder, files, error))
        return complain(badUsage, error);
    const std::string made = pathIn(options.folder, caseFile);
    print(stdout, "Made " + made + "\nTry it: SolvaneHost run " + made + "\n");
    return ok;
}

} // namespace solvane::host
