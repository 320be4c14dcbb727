#include "UnitRunner.h"

#include "ModelBag.h"
#include "Streams.h"
#include "UnitCalls.h"
#include "WorkerThread.h"
#include "capeopen/CapeError.h"
#include "com/Text.h"
#include "com/Variant.h"

#include <objbase.h>
#include <ocidl.h>

namespace solvane::host {

namespace {

/// A unit from its creation to its release.
class UnitSession {
public:
    explicit UnitSession(const Case& flowsheet) : flowsheet_(flowsheet) {}
    ~UnitSession() { end(); }
    UnitSession(const UnitSession&) = delete;
    UnitSession& operator=(const UnitSession&) = delete;

    ICapeUnit* unit() const { return unit_.get(); }

    bool start(const LogSink& log, std::string& error) {
        if (!create(error))
            return false;
        for (const StartupStep step : flowsheet_.profile.startup)
            if (!doStep(step, log, error))
                return false;
        return true;
    }

private:
    bool create(std::string& error) {
        CLSID classId{};
        HRESULT result = CLSIDFromString(widen(flowsheet_.unitProgId, CP_UTF8).c_str(), &classId);
        if (FAILED(result)) {
            error = "No component is registered as \"" + flowsheet_.unitProgId + "\"";
            return false;
        }
        ComRef<IUnknown> object;
        result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IUnknown,
                                  object.putVoid());
        if (FAILED(result)) {
            error = "The unit \"" + flowsheet_.unitProgId +
                    "\" cannot be created: " + narrow(FormatHresultText(result), CP_UTF8);
            return false;
        }
        unit_ = object.as<ICapeUnit>();
        utilities_ = object.as<ICapeUtilities>();
        if (!unit_ || !utilities_) {
            error = "\"" + flowsheet_.unitProgId + "\" is not a unit operation";
            return false;
        }
        if (const auto identification = object.as<ICapeIdentification>())
            identification->put_ComponentName(Bstr(widen(flowsheet_.unitName, CP_UTF8)).get());
        return true;
    }

    bool doStep(StartupStep step, const LogSink& log, std::string& error) {
        switch (step) {
        case StartupStep::context:
            return giveContext(log, error);
        case StartupStep::load:
            return load(error);
        case StartupStep::initialize:
            return checked("Initialize", utilities_->Initialize(), error);
        }
        return false;
    }

    bool giveContext(const LogSink& log, std::string& error) {
        const auto context = SimulationContext::create(log);
        return checked("put_simulationContext", utilities_->put_simulationContext(context.get()), error);
    }

    bool load(std::string& error) {
        if (!flowsheet_.model)
            return true;
        const auto persistence = unit_.as<IPersistPropertyBag>();
        if (!persistence) {
            error = "The unit cannot load a model: it has no IPersistPropertyBag";
            return false;
        }
        std::vector<std::string> entries;
        const auto errorLog = createErrorLog(entries);
        const HRESULT result = persistence->Load(createModelBag(flowsheet_).get(), errorLog.get());
        if (!checked("Load", result, error)) {
            for (const std::string& entry : entries)
                error += "; " + entry;
            return false;
        }
        if (entries.empty())
            return true;
        error = "The unit refuses a part of its model";
        for (const std::string& entry : entries)
            error += "; " + entry;
        return false;
    }

    bool checked(const char* call, HRESULT result, std::string& error) {
        if (FAILED(result))
            error = callFailure(call, unit_.get(), result);
        return SUCCEEDED(result);
    }

    void end() {
        if (utilities_ && flowsheet_.profile.terminates)
            utilities_->Terminate();
        utilities_.reset();
        unit_.reset();
    }

    const Case& flowsheet_;
    ComRef<ICapeUnit> unit_;
    ComRef<ICapeUtilities> utilities_;
};

/// Everything from the connected ports to the reports, on the unit or its proxy.
bool runUnit(ICapeUnit* unit, const std::vector<Connection>& connections, bool reconnects,
             RunResults& results, std::string& error) {
    const auto around = [&](auto&& call) {
        return (!reconnects ||
                (disconnectPorts(unit, connections, error) && connectPorts(unit, connections, error))) &&
               call();
    };
    if (!connectPorts(unit, connections, error) || !around([&] { return validate(unit, error); }))
        return false;
    const bool calculated = around([&] { return calculate(unit, error); });
    // A unit that failed to calculate may still tell why in its reports.
    std::string laterError;
    const bool read = around([&] { return readParameters(unit, results.parameters, laterError); }) &&
                      around([&] { return readReports(unit, results.reports, laterError); }) &&
                      disconnectPorts(unit, connections, laterError);
    if (calculated && !read)
        error = laterError;
    return calculated && read;
}

} // namespace

bool runCase(const Case& flowsheet, const LogSink& log, RunResults& results, std::string& error) {
    results.generation = flowsheet.generation;
    for (const Compound* compound : flowsheet.compounds)
        results.compounds.emplace_back(compound->name);

    std::vector<Stream> streams;
    if (!makeStreams(flowsheet, streams, error))
        return false;
    std::vector<Connection> connections;
    for (const Stream& stream : streams)
        connections.push_back({stream.name, stream.material});

    UnitSession session(flowsheet);
    if (!session.start(log, error))
        return false;
    const bool reconnects = flowsheet.profile.reconnects;
    const auto task = [&](ICapeUnit* unit, const std::vector<Connection>& ports, std::string& taskError) {
        return runUnit(unit, ports, reconnects, results, taskError);
    };
    const bool ran = flowsheet.profile.calculatesOnWorker
                         ? runOnWorker(session.unit(), connections, task, error)
                         : task(session.unit(), connections, error);
    if (!ran)
        return false;
    for (const Stream& stream : streams)
        if (!readStream(stream, results.streams.emplace_back(), error))
            return false;
    return true;
}

} // namespace solvane::host
