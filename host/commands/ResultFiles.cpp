#include "ResultFiles.h"

#include "cases/FilePath.h"
#include "results/ResultsCsv.h"
#include "results/ResultsHtml.h"
#include "results/ResultsJson.h"

namespace solvane::host {

namespace {

/// The name without the characters that Windows allows in no file name.
std::string fileName(std::string name) {
    for (char& c : name)
        if (static_cast<unsigned char>(c) < ' ' ||
            std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos)
            c = '_';
    return name;
}

/// A case that lists its units has a folder for each.
bool writeReports(const std::string& folder, const RunResults& results, std::string& error) {
    for (const UnitResult& unit : results.units) {
        std::filesystem::path place = filePath(folder);
        if (results.isFlowsheet)
            place /= filePath(fileName(unit.name));
        std::error_code fault;
        std::filesystem::create_directories(place, fault);
        for (const ReportResult& report : unit.reports)
            if (!writeFile(place / filePath(fileName(report.name) + ".txt"), report.text, error))
                return false;
    }
    return true;
}

} // namespace

bool removeOldFile(const std::string& path, std::string& error) {
    std::error_code fault;
    if (path.empty() || !std::filesystem::is_regular_file(filePath(path), fault) ||
        std::filesystem::remove(filePath(path), fault))
        return true;
    error = "the file " + pathText(filePath(path)) +
            " cannot be replaced: check whether another program has it open";
    return false;
}

bool removeOldResults(const RunOptions& options, std::string& error) {
    return removeOldFile(options.jsonPath, error) && removeOldFile(options.csvPath, error) &&
           removeOldFile(options.htmlPath, error);
}

bool writeResultFiles(const RunOptions& options, const RunResults& results, const TableUnits& units,
                      std::string& error) {
    return (options.jsonPath.empty() || writeFile(filePath(options.jsonPath), resultsJson(results), error)) &&
           (options.csvPath.empty() ||
            writeFile(filePath(options.csvPath), streamsCsv(results, units), error)) &&
           (options.htmlPath.empty() ||
            writeFile(filePath(options.htmlPath), resultsHtml(results, units, options.casePath), error)) &&
           (options.reportFolder.empty() || writeReports(options.reportFolder, results, error));
}

} // namespace solvane::host
