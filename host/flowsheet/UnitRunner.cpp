#include "UnitRunner.h"

#include "ParameterCalls.h"
#include "Reentry.h"
#include "Streams.h"
#include "UnitCalls.h"
#include "UnitSession.h"
#include "WorkerThread.h"
#include "results/Balances.h"
#include "results/ScriptError.h"
#include "results/Warnings.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <memory>

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

/// All units of a case exist at the same time, as in a simulator.
class Flowsheet {
public:
    Flowsheet(const Case& flowsheet, RunResults& results) : case_(flowsheet), results_(results) {}

    bool start(const RunLog& log, std::string& error) {
        habits_->rules = case_.profile.materials;
        if (!makeStreams(case_, habits_, streams_, error))
            return false;
        for (std::size_t i = 0; i < case_.units.size(); ++i) {
            const UnitCase& unit = case_.units[i];
            const LogSink& sink = sinks_.emplace_back([this, &log, &unit](std::string_view line) {
                results_.log.push_back({unit.name, std::string(line)});
                log(unit.name, line);
            });
            sessions_.push_back(std::make_unique<UnitSession>(unit, case_.profile));
            if (!sessions_.back()->start(sink, error)) {
                results_.fault = sessions_.back()->fault();
                return failed(i, error);
            }
        }
        return true;
    }

    bool run(std::string& error) {
        for (const FeedStream& feed : case_.feeds)
            if (!addStream(feed.name, error))
                return false;
        for (std::size_t i = 0; i < case_.units.size(); ++i)
            if (!runOne(case_.units[i], *sessions_[i], sinks_[i], results_.units[i], error))
                return failed(i, error);
        return true;
    }

private:
    const Stream& streamOf(const std::string& name) const {
        return *std::ranges::find(streams_, name, &Stream::name);
    }

    bool addStream(const std::string& name, std::string& error) {
        StreamResult result;
        if (!readStream(streamOf(name), result, error))
            return false;
        results_.streams.push_back(std::move(result));
        return true;
    }

    bool runOne(const UnitCase& unitCase, UnitSession& session, const LogSink& log, UnitResult& result,
                std::string& error) {
        const std::vector<Connection> connections = connectionsOf(unitCase, streams_);
        Reentry reentry(session, case_.profile, log);
        const auto task = [&](ICapeUnit* called, const std::vector<Connection>& ports,
                              std::string& taskError) {
            return runUnit(called, session, ports, case_.profile.reconnects, reentry, result, taskError);
        };
        habits_->onCall = [&reentry] { reentry.onMaterialCall(); };
        const bool ran = case_.profile.calculatesOnWorker
                             ? runOnWorker(session.unit(), connections, task, error)
                             : task(session.unit(), connections, error);
        habits_->onCall = nullptr;
        if (!ran || !std::ranges::all_of(unitCase.products, [&](const PortConnection& product) {
                return addStream(product.stream, error);
            }))
            return false;
        result.status = UnitStatus::calculated;
        review(unitCase, result);
        return true;
    }

    /// Adds the unit's balance and warnings.
    void review(const UnitCase& unitCase, const UnitResult& result) {
        const auto resultsOf = [&](const std::vector<PortConnection>& ports) {
            std::vector<const StreamResult*> streams;
            for (const PortConnection& port : ports)
                streams.push_back(&*std::ranges::find(results_.streams, port.stream, &StreamResult::name));
            return streams;
        };
        const auto products = resultsOf(unitCase.products);
        results_.balances.push_back(
            balanceOf(unitCase.name, case_.compounds, resultsOf(unitCase.feeds), products));
        addWarnings(result, results_.balances.back(), products, results_.warnings);
    }

    bool failed(std::size_t unit, std::string& error) const {
        results_.units[unit].status = UnitStatus::failed;
        results_.failure.emplace().message = error;
        results_.failure->unit = case_.units[unit].name;
        if (case_.isFlowsheet)
            error.insert(0, "Unit \"" + case_.units[unit].name + "\": ");
        return false;
    }

    const Case& case_;
    RunResults& results_;
    std::shared_ptr<MaterialHabits> habits_ = std::make_shared<MaterialHabits>();
    std::vector<Stream> streams_;
    std::deque<LogSink> sinks_; ///< by unit
    std::vector<std::unique_ptr<UnitSession>> sessions_;
};

} // namespace

bool runCase(const Case& flowsheet, const RunLog& log, RunResults& results, std::string& error) {
    results.generation = flowsheet.generation;
    results.isFlowsheet = flowsheet.isFlowsheet;
    for (const Compound* compound : flowsheet.compounds)
        results.compounds.emplace_back(compound->name);
    for (const UnitCase& unit : flowsheet.units) {
        UnitResult& result = results.units.emplace_back();
        result.name = unit.name;
        std::ranges::transform(unit.feeds, std::back_inserter(result.feeds), &PortConnection::stream);
        std::ranges::transform(unit.products, std::back_inserter(result.products), &PortConnection::stream);
    }
    Flowsheet run(flowsheet, results);
    if (run.start(log, error) && run.run(error))
        return true;
    if (!results.failure)
        results.failure.emplace().message = error;
    results.failure->scriptError = findScriptError(flowsheet, results);
    return false;
}

} // namespace solvane::host
