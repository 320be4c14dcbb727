#include "Trials.h"

#include "results/ScriptError.h"

#include <algorithm>

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

void noLog(std::string_view, std::string_view) {}

} // namespace

Trials::Trials(const Case& flowsheet, TrialConditions& conditions)
    : conditions_(conditions), units_(flowsheet, noLog) {}

Trial Trials::run(const Case& variation, const std::string& name) {
    return runOn(units_, variation, name);
}

Trial Trials::runAnew(const Case& variation, const std::string& name) const {
    Flowsheet units(variation, noLog);
    return runOn(units, variation, name);
}

Trial Trials::runOn(Flowsheet& units, const Case& variation, const std::string& name) const {
    Trial trial;
    RunWatch& watch = conditions_.watch;
    if (watch.isStopRequested())
        return trial;
    watch.beginRun(name);
    trial.succeeded = units.run(variation, trial.results, trial.message, &watch);
    trial.reachedLimit = !trial.succeeded && watch.stopReason() == StopReason::limit;
    watch.endRun();
    if (trial.succeeded) {
        trial.outputs = outputsOf(trial.results);
        return trial;
    }
    trial.isRefused = !trial.reachedLimit && isRefusal(conditions_.sources, trial.results);
    if (const auto& place = trial.results.failure->scriptError)
        trial.message = scriptErrorLine(*place);
    const std::string& hint = trial.results.failure->hint;
    if (const std::string end = "; " + hint; !hint.empty() && trial.message.ends_with(end)) {
        trial.message.resize(trial.message.size() - end.size());
        trial.remedy = hint;
    }
    if (watch.isStopRequested())
        conditions_.stopped = trial.message;
    return trial;
}

} // namespace solvane::host
