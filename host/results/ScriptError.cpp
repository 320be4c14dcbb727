#include "ScriptError.h"

#include "cases/FilePath.h"

#include <algorithm>
#include <array>
#include <regex>
#include <span>
#include <sstream>

namespace solvane::host {

namespace {

constexpr std::string_view errorMarker = "Evaluation error: ";

/// What the engine warns of, by the ends of the lines. A script's own warnings may be meant.
struct EnginesWarning {
    std::string_view end;
    const char* remedy;
};

constexpr std::array enginesWarnings{
    EnginesWarning{"which nothing calls, and what follows it never runs",
                   "write its statements before it, outside of any function, or call it there"},
    EnginesWarning{"and what follows it never runs", "close or remove it"},
    EnginesWarning{
        "is not a number, but is read as one",
        "correct the file, with decimals after a point, or skip headers, as in csvread(file, 1, 0) or "
        "dlmread(file, ',', 1, 0)"},
    EnginesWarning{"but are not read so", "name the separator, as in dlmread(file, ';') or dlmread(file, "
                                          "'\\t'), and write decimals after a point"},
    EnginesWarning{"and their columns do not match",
                   "write 1200 in place of 1,200 and 0.5 in place of 0,5; cells that lack are read as 0"},
    EnginesWarning{"has no numbers where it is read",
                   "look whether the file is empty, or the script skips too many rows or columns"},
    EnginesWarning{"is not plain text, but is read as such", "save it as plain text, such as \"CSV UTF-8\""},
    EnginesWarning{"assigns and does not compare",
                   "write == to compare; an assignment that is meant stands on a line of its own"},
    EnginesWarning{"hides Octave's own function of that name",
                   "rename the file and its calls: Octave's other functions call it, too"},
};

std::string_view withoutBlanks(std::string_view line) {
    const std::size_t begin = std::min(line.find_first_not_of(" \t\r"), line.size());
    line.remove_prefix(begin);
    return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}

/// "'x' undefined in line 4 of tidy.m" and "parse error in line 4: y = 1 +" without the place, which is
/// known.
std::string withoutPlace(std::string_view line) {
    static const std::regex place(R"(^('.*' undefined|parse error) in line \d+( of .*?)?(?=[:;]|$))");
    return std::regex_replace(std::string(line), place, "$1");
}

/// The message's lines in one.
std::string messageIn(std::string_view output) {
    const std::size_t marker = output.rfind(errorMarker);
    if (marker == output.npos)
        return {};
    output.remove_prefix(marker + errorMarker.size());
    output = output.substr(0, output.find(outputEnd));
    std::string message;
    while (!output.empty()) {
        const std::size_t end = std::min(output.find('\n'), output.size());
        const std::string_view line = withoutBlanks(output.substr(0, end));
        output.remove_prefix(std::min(end + 1, output.size()));
        if (!line.empty())
            message.append(message.empty() ? "" : ", ").append(line);
    }
    return withoutPlace(message);
}

const ReportResult* outputOf(const UnitResult& unit) {
    const auto output = std::ranges::find(unit.reports, outputReport, &ReportResult::name);
    return output == unit.reports.end() ? nullptr : &*output;
}

/// Null for a file that is not the model's.
const ModelFile* fileOf(const UnitModel& model, const ErrorPlace& place) {
    if (place.isInScript())
        return &model.script;
    const auto file = std::ranges::find(model.files, place.file, &ModelFile::name);
    return file == model.files.end() ? nullptr : &*file;
}

} // namespace

std::optional<ScriptError> findScriptError(const Case& flowsheet, const RunResults& results) {
    const auto unit = std::ranges::find(results.units, UnitStatus::failed, &UnitResult::status);
    if (unit == results.units.end())
        return std::nullopt;
    const ReportResult* output = outputOf(*unit);
    const std::vector<ErrorPlace> stack = output ? readErrorStack(output->text) : std::vector<ErrorPlace>();
    if (stack.empty())
        return std::nullopt;
    const auto* model = std::get_if<UnitModel>(
        &flowsheet.units.at(static_cast<std::size_t>(unit - results.units.begin())).model);
    ScriptError error = scriptErrorAt(model, stack.front());
    error.message = messageIn(output->text);
    for (const ErrorPlace& caller : std::span(stack).subspan(1))
        error.callers.push_back(placeText(scriptErrorAt(model, caller)));
    return error;
}

ScriptError scriptErrorAt(const UnitModel* model, const ErrorPlace& place) {
    ScriptError error{place.isInScript() ? "script" : place.file, {}, place.line, place.column, {}};
    if (const ModelFile* file = model ? fileOf(*model, place) : nullptr; file && !file->name.empty()) {
        error.file = file->name;
        error.path = file->path.empty() ? "" : pathFromHere(file->path);
    }
    return error;
}

bool hasScriptEnded(const UnitResult& unit) {
    const ReportResult* output = outputOf(unit);
    return output && output->text.find(outputEnd) != std::string::npos;
}

std::string printedByScript(const UnitResult& unit) {
    const ReportResult* output = outputOf(unit);
    const std::string_view text = output ? output->text : std::string_view();
    const std::size_t begin = text.find(outputBegin);
    if (begin == text.npos)
        return {};
    const std::size_t line = text.find('\n', begin);
    const std::size_t end = std::min(text.rfind(errorMarker), text.rfind(outputEnd));
    return end == text.npos || end <= line ? "" : std::string(text.substr(line + 1, end - line - 1));
}

std::vector<ScriptWarning> scriptWarnings(const UnitResult& unit) {
    constexpr std::string_view begin = "warning: ";
    std::vector<ScriptWarning> warnings;
    const ReportResult* output = outputOf(unit);
    std::istringstream lines(output ? output->text : std::string());
    for (std::string line; std::getline(lines, line);)
        if (const auto known = std::ranges::find_if(
                enginesWarnings, [&](const auto& one) { return withoutBlanks(line).ends_with(one.end); });
            known != enginesWarnings.end() && line.starts_with(begin))
            warnings.push_back({std::string(withoutBlanks(line).substr(begin.size())), known->remedy});
    return warnings;
}

std::string placeText(const ScriptError& error) {
    return (error.path.empty() ? error.file : error.path) + ":" + std::to_string(error.line) +
           (error.column > 0 ? ":" + std::to_string(error.column) : "");
}

std::string scriptErrorLine(const ScriptError& error) {
    return placeText(error) + ": " + error.message;
}

} // namespace solvane::host
