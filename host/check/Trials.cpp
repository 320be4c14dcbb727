#include "Trials.h"

#include "results/ScriptError.h"

#include <algorithm>
#include <utility>

namespace solvane::host {

namespace {

/// The line of the script or of an additional file, counted from 1; empty if it is not known.
std::string sourceLine(const UnitModel& model, const ScriptError& place) {
    const auto file = std::ranges::find(model.files, place.file, &ModelFile::name);
    std::string_view text = file == model.files.end() ? model.script.bytes : file->bytes;
    for (long line = 1; line < place.line; ++line)
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    return std::string(text.substr(0, text.find('\n')));
}

bool callsError(std::string_view line) {
    const std::size_t at = line.find("error");
    if (at == line.npos || line.substr(0, at).find('%') != line.npos)
        return false;
    const std::size_t next = line.find_first_not_of(' ', at + 5);
    return next != line.npos && (line[next] == '(' || line[next] == '\'' || line[next] == '"');
}

/// Whether the script raised its failure itself.
bool isRefusal(const Case& sources, const RunResults& results) {
    if (!results.failure->scriptError)
        return false;
    const auto unit = std::ranges::find(sources.units, results.failure->unit, &UnitCase::name);
    const auto* model = unit == sources.units.end() ? nullptr : std::get_if<UnitModel>(&unit->model);
    return model && callsError(sourceLine(*model, *results.failure->scriptError));
}

} // namespace

Trials::Trials(const Case& flowsheet, const Case& sources, RunLog log, RunWatch& watch)
    : sources_(sources), log_(std::move(log)), watch_(watch), units_(flowsheet, log_) {}

Trial Trials::run(const Case& variation) {
    return runOn(units_, variation);
}

Trial Trials::runAnew(const Case& variation) const {
    Flowsheet units(variation, log_);
    return runOn(units, variation);
}

Trial Trials::runOn(Flowsheet& units, const Case& variation) const {
    Trial trial;
    if (watch_.isStopRequested())
        return trial;
    trial.succeeded = units.run(variation, trial.results, trial.message, &watch_);
    if (trial.succeeded) {
        trial.outputs = outputsOf(trial.results);
        return trial;
    }
    trial.isRefused = isRefusal(sources_, trial.results);
    if (const auto& place = trial.results.failure->scriptError)
        trial.message = scriptErrorLine(*place);
    return trial;
}

} // namespace solvane::host
