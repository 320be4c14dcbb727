#include "Flowsheet.h"

#include "ParameterCalls.h"
#include "ProductFailure.h"
#include "Recycles.h"
#include "Reentry.h"
#include "UnitCalls.h"
#include "WorkerThread.h"
#include "results/Abridged.h"
#include "results/Balances.h"
#include "results/ScriptError.h"
#include "script/FailureCause.h"
#include "script/ScriptMistakes.h"
#include "script/ScriptStatements.h"
#include "warnings/FailureHint.h"
#include "warnings/PlainNumbers.h"
#include "warnings/Warnings.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace solvane::host {

namespace {

/// Everything from the connected ports to the reports, on the unit of the session or its proxy.
bool runUnit(ICapeUnit* unit, const UnitSession& session, const std::vector<Connection>& connections,
             bool reconnects, Reentry& reentry, UnitResult& results, std::string& error) {
    const auto around = [&](auto&& call) {
        return (!reconnects ||
                (disconnectPorts(unit, connections, error) && connectPorts(unit, connections, error))) &&
               call();
    };
    if (!connectPorts(unit, connections, error))
        return false;
    const bool calculated = around([&] { return validate(unit, error); }) && around([&] {
                                reentry.begin();
                                const bool succeeded = calculate(unit, error);
                                reentry.end();
                                return succeeded;
                            });
    if (!session.unit())
        return calculated;
    // What a unit returns that failed to calculate may still say why.
    std::string laterError;
    const bool read = around([&] { return readParameters(unit, results.parameters, laterError); }) &&
                      around([&] { return readReports(unit, results.reports, laterError); }) &&
                      disconnectPorts(unit, connections, laterError);
    if (calculated && !read)
        error = laterError;
    return calculated && read;
}

/// Leaves nothing of an earlier calculation of the units, only what the case itself shows.
void clearUnits(const Case& flowsheet, RunResults& results) {
    results.streams.clear();
    results.balances.clear();
    results.warnings.clear();
    addFeedWarnings(flowsheet, results.warnings);
    results.units.clear();
    for (const UnitCase& unit : flowsheet.units) {
        UnitResult& result = results.units.emplace_back();
        result.name = unit.name;
        std::ranges::transform(unit.feeds, std::back_inserter(result.feeds), &PortConnection::stream);
        std::ranges::transform(unit.products, std::back_inserter(result.products), &PortConnection::stream);
    }
}

/// Results without a value yet.
RunResults blankResults(const Case& flowsheet) {
    RunResults results;
    results.generation = flowsheet.generation;
    results.isFlowsheet = flowsheet.isFlowsheet;
    for (const Compound* compound : flowsheet.compounds)
        results.compounds.emplace_back(compound->name);
    clearUnits(flowsheet, results);
    return results;
}

/// Adds what to do to the message of the failure of a unit, if that is known, and notes it as the failure's.
void addHint(const UnitCase& unit, RunResults& results, std::string& message) {
    const auto failed = std::ranges::find(results.units, unit.name, &UnitResult::name);
    std::string hint = failureHint(message, {results, *failed, std::get_if<UnitModel>(&unit.model)});
    if (!hint.empty())
        message.append("; ").append(hint);
    results.failure->hint = std::move(hint);
}

} // namespace

Flowsheet::Flowsheet(Case flowsheet, RunLog log)
    : case_(std::move(flowsheet)), log_(std::move(log)), members_(case_.units.size()) {
    habits_->rules = case_.profile.materials;
    for (std::size_t i = 0; i < members_.size(); ++i) {
        if (const auto* model = std::get_if<UnitModel>(&case_.units[i].model)) {
            members_[i].wrongNames = wrongPhaseNames(*model);
            std::ranges::move(wrongCompoundNames(*model, case_.compounds),
                              std::back_inserter(members_[i].wrongNames));
            members_[i].mistakes = scriptMistakes(*model);
        }
        members_[i].log = [this, &unit = case_.units[i]](std::string_view line) {
            if (results_)
                addLogLine(results_->log, {unit.name, std::string(line)});
            if (watch_)
                watch_->log(line);
            log_(unit.name, line);
        };
    }
}

bool Flowsheet::run(const Case& variation, RunResults& results, std::string& error, RunWatch* watch) {
    case_.feeds = variation.feeds;
    for (std::size_t i = 0; i < case_.units.size(); ++i)
        case_.units[i].parameters = variation.units[i].parameters;
    return run(results, error, watch);
}

bool Flowsheet::run(RunResults& results, std::string& error, RunWatch* watch) {
    results = blankResults(case_);
    results_ = &results;
    watch_ = watch;
    const bool succeeded = start(results, error) && calculate(results, error);
    results_ = nullptr;
    watch_ = nullptr;
    if (succeeded)
        return true;
    if (!results.failure)
        results.failure.emplace().message = error;
    std::optional<ScriptError>& script = results.failure->scriptError;
    script = findScriptError(case_, results);
    if (script)
        addHint(*std::ranges::find(case_.units, results.failure->unit, &UnitCase::name), results,
                script->message);
    else
        addProductPlace(case_, *results.failure, error);
    addCause(*results.failure, error);
    if (watch && watch->isStopRequested()) {
        // Of what the stop made fail, only the place matters.
        results.fault = Fault::calculation;
        results.failure->message = watch->stopText();
        error = watch->stopText() + ": " + watch->place();
        if (script)
            script->message = watch->stopText();
        else if (watch->stopReason() == StopReason::limit)
            error += "; to find the line, let the script call logMessage in its loops";
    }
    return false;
}

/// Adds what the script's text says about the failure to the message that a user sees.
void Flowsheet::addCause(RunFailure& failure, std::string& error) const {
    const auto unit = std::ranges::find(case_.units, failure.unit, &UnitCase::name);
    const auto* model = unit == case_.units.end() ? nullptr : std::get_if<UnitModel>(&unit->model);
    if (!model)
        return;
    const std::optional<ScriptError>& script = failure.scriptError;
    const std::string cause =
        failureCause(*model, script ? ScriptFailure{script->message, script->file, script->line}
                                    : ScriptFailure{failure.message});
    if (cause.empty())
        return;
    for (std::string* message : {script ? &failure.scriptError->message : &failure.message, &error})
        message->append("; ").append(cause);
}

/// Makes the streams anew, and brings every unit into the state in which its model is loaded.
bool Flowsheet::start(RunResults& results, std::string& error) {
    streams_.clear();
    if (!makeStreams(case_, habits_, streams_, error))
        return false;
    for (std::size_t i = 0; i < members_.size(); ++i) {
        if (!mayBegin(i))
            return failed(i, results, error);
        auto& [log, session, wrongNames, mistakes] = members_[i];
        const bool restarts = session && session->canRestart();
        if (!restarts) {
            session.reset(); // ends the former unit first
            session = std::make_unique<UnitSession>(case_.units[i], case_.profile);
        }
        if (!(restarts ? session->restart(error) : session->start(log, error))) {
            results.fault = session->fault();
            if (!restarts)
                session.reset();
            return failed(i, results, error);
        }
    }
    return true;
}

bool Flowsheet::calculate(RunResults& results, std::string& error) {
    if (case_.tears.empty())
        return calculateUnits("", results, error);
    const auto pass = [&](int iteration, const std::vector<StreamResult>& tears, std::string& passError) {
        tears_ = tears;
        clearUnits(case_, results);
        return calculateUnits("In iteration " + std::to_string(iteration) + ": ", results, passError);
    };
    return convergeRecycles(case_, streams_, pass, results.convergence.emplace(), error);
}

bool Flowsheet::calculateUnits(const std::string& when, RunResults& results, std::string& error) {
    for (const FeedStream& feed : case_.feeds)
        if (!addStream(feed.name, results, error))
            return false;
    for (std::size_t i = 0; i < case_.units.size(); ++i) {
        if (!mayBegin(i))
            return failed(i, results, error);
        if (!runOne(i, results, error)) {
            // Without the script's end its Matlab may be lost, and the next run starts another.
            if (!hasScriptEnded(results.units[i]))
                members_[i].session.reset();
            error.insert(0, when);
            return failed(i, results, error);
        }
    }
    return true;
}

bool Flowsheet::mayBegin(std::size_t unit) const {
    if (watch_)
        watch_->beginUnit(case_.units[unit].name);
    return !watch_ || !watch_->isStopRequested();
}

bool Flowsheet::addStream(const std::string& name, RunResults& results, std::string& error) const {
    StreamResult result;
    if (!readStream(*std::ranges::find(streams_, name, &Stream::name), result, error))
        return false;
    results.streams.push_back(std::move(result));
    return true;
}

bool Flowsheet::runOne(std::size_t unit, RunResults& results, std::string& error) {
    const UnitCase& unitCase = case_.units[unit];
    UnitSession& session = *members_[unit].session;
    UnitResult& result = results.units[unit];
    const std::vector<Connection> connections = connectionsOf(unitCase, streams_);
    Reentry reentry(session, case_.profile, members_[unit].log);
    const auto task = [&](ICapeUnit* called, const std::vector<Connection>& ports, std::string& taskError) {
        return runUnit(called, session, ports, case_.profile.reconnects, reentry, result, taskError);
    };
    habits_->onCall = [&reentry] { reentry.onMaterialCall(); };
    habits_->onFlash = [&result] { ++result.flashes; };
    const auto begin = std::chrono::steady_clock::now();
    const bool ran = case_.profile.calculatesOnWorker ? runOnWorker(session.unit(), connections, task, error)
                                                      : task(session.unit(), connections, error);
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    habits_->onCall = nullptr;
    habits_->onFlash = nullptr;
    if (!ran || !std::ranges::all_of(unitCase.products, [&](const PortConnection& product) {
            return addStream(product.stream, results, error);
        }))
        return false;
    result.status = UnitStatus::calculated;
    review(unit, results);
    return true;
}

/// Adds the unit's balance and warnings.
void Flowsheet::review(std::size_t unit, RunResults& results) const {
    const UnitCase& unitCase = case_.units[unit];
    std::vector<const StreamResult*> feeds, products;
    const auto find = [](const std::vector<StreamResult>& streams, const PortConnection& port) {
        const auto found = std::ranges::find(streams, port.stream, &StreamResult::name);
        return found == streams.end() ? nullptr : &*found;
    };
    for (const PortConnection& port : unitCase.feeds) {
        const StreamResult* tear = find(tears_, port);
        feeds.push_back(tear ? tear : find(results.streams, port));
    }
    for (const PortConnection& port : unitCase.products)
        products.push_back(find(results.streams, port));
    results.balances.push_back(balanceOf(unitCase.name, case_.compounds, feeds, products));
    addParameterWarnings(unitCase, results.units[unit], results.streams, results.warnings);
    addReadWarnings(unit, results, "script", members_[unit].mistakes);
    addScriptWarnings(results.units[unit], results.warnings);
    addNameWarnings(unit, results);
    addWarnings({results.units[unit], results.balances.back(), case_.compounds, feeds, products},
                results.warnings);
}

void Flowsheet::addNameWarnings(std::size_t unit, RunResults& results) const {
    std::vector<ScriptFinding> findings = members_[unit].wrongNames;
    const auto* model = std::get_if<UnitModel>(&case_.units[unit].model);
    if (model && results.units[unit].status == UnitStatus::failed)
        std::ranges::move(absentCompoundNames(*model, case_.compounds), std::back_inserter(findings));
    addReadWarnings(unit, results, namesInScript, findings);
}

void Flowsheet::addReadWarnings(std::size_t unit, RunResults& results, const char* subject,
                                const std::vector<ScriptFinding>& findings) const {
    for (const ScriptFinding& finding : findings)
        results.warnings.push_back({case_.units[unit].name, subject, finding.text, finding.remedy});
}

bool Flowsheet::failed(std::size_t unit, RunResults& results, std::string& error) const {
    results.units[unit].status = UnitStatus::failed;
    addParameterWarnings(case_.units[unit], results.units[unit], results.streams, results.warnings);
    addReadWarnings(unit, results, "script", members_[unit].mistakes);
    addScriptWarnings(results.units[unit], results.warnings);
    if (hasScriptEnded(results.units[unit])) {
        addNameWarnings(unit, results);
        const auto* model = std::get_if<UnitModel>(&case_.units[unit].model);
        if (model && !hasStatement(*model))
            results.warnings.push_back({case_.units[unit].name, "script", "it is empty, or has only comments",
                                        "let it call setProduct for each product"});
    }
    results.failure.emplace().unit = case_.units[unit].name;
    addHint(case_.units[unit], results, error);
    results.failure->message = error;
    if (case_.isFlowsheet)
        error.insert(0, "Unit \"" + case_.units[unit].name + "\": ");
    return false;
}

bool runCase(const Case& flowsheet, const RunLog& log, RunResults& results, std::string& error,
             RunWatch* watch) {
    return Flowsheet(flowsheet, log).run(results, error, watch);
}

} // namespace solvane::host
