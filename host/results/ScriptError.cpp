#include "ScriptError.h"

#include "channel/ErrorStack.h"

#include <algorithm>

namespace solvane::host {

namespace {

constexpr std::string_view errorMarker = "Evaluation error: ";

std::string_view withoutBlanks(std::string_view line) {
    const std::size_t begin = std::min(line.find_first_not_of(" \t\r"), line.size());
    line.remove_prefix(begin);
    return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}

/// Octave counts in the file that the unit makes of the script.
std::string_view withoutPlace(std::string_view line) {
    for (const std::string_view words : {"undefined", "parse error"}) {
        const std::size_t at = line.find(std::string(words) + " near line ");
        if (at != line.npos)
            return line.substr(0, at + words.size());
    }
    return line;
}

/// The message's lines in one, without the copy of the faulty line and the caret below it.
std::string messageIn(std::string_view output) {
    const std::size_t marker = output.rfind(errorMarker);
    if (marker == output.npos)
        return {};
    output.remove_prefix(marker + errorMarker.size());
    output = output.substr(0, output.find(outputEnd));
    std::string message;
    while (!output.empty()) {
        const std::size_t end = std::min(output.find('\n'), output.size());
        const std::string_view line = withoutPlace(withoutBlanks(output.substr(0, end)));
        output.remove_prefix(std::min(end + 1, output.size()));
        if (line.empty() || line == "^" || line.starts_with(">>> "))
            continue;
        message.append(message.empty() ? "" : ", ").append(line);
    }
    return message;
}

} // namespace

std::optional<ScriptError> findScriptError(const Case& flowsheet, const RunResults& results) {
    const auto unit = std::ranges::find(results.units, UnitStatus::failed, &UnitResult::status);
    if (unit == results.units.end())
        return std::nullopt;
    const std::vector<ReportResult>& reports = unit->reports;
    const auto output = std::ranges::find(reports, outputReport, &ReportResult::name);
    if (output == reports.end())
        return std::nullopt;
    const std::vector<ErrorPlace> stack = readErrorStack(output->text);
    if (stack.empty())
        return std::nullopt;
    const ErrorPlace& place = stack.front();
    ScriptError error{place.file, place.line, place.column, messageIn(output->text)};
    if (place.isInScript()) {
        const auto* model = std::get_if<UnitModel>(
            &flowsheet.units.at(static_cast<std::size_t>(unit - results.units.begin())).model);
        error.file = model && !model->script.name.empty() ? model->script.name : "script";
    }
    return error;
}

bool hasScriptEnded(const UnitResult& unit) {
    const auto output = std::ranges::find(unit.reports, outputReport, &ReportResult::name);
    return output != unit.reports.end() && output->text.find(outputEnd) != std::string::npos;
}

std::string scriptErrorLine(const ScriptError& error) {
    return error.file + ":" + std::to_string(error.line) + ":" +
           (error.column > 0 ? std::to_string(error.column) + ":" : "") + " " + error.message;
}

} // namespace solvane::host
