#include "UnitSession.h"

#include "ModelStream.h"
#include "ParameterCalls.h"
#include "PropertyBag.h"
#include "UnitCalls.h"
#include "com/CapeError.h"
#include "com/Text.h"
#include "com/Variant.h"

#include <objbase.h>
#include <ocidl.h>

namespace solvane::host {

namespace {

bool loadFromBag(ICapeUnit* unit, const UnitModel& model, const UnitCase& unitCase, std::string& error) {
    const auto persistence = queryInterface<IPersistPropertyBag>(unit);
    if (!persistence) {
        error = "The unit cannot load a model: it has no IPersistPropertyBag";
        return false;
    }
    std::vector<std::string> entries;
    const auto errorLog = createErrorLog(entries);
    const HRESULT result = persistence->Load(createModelBag(model, unitCase).get(), errorLog.get());
    if (SUCCEEDED(result) && entries.empty())
        return true;
    error = FAILED(result) ? callFailure("Load", unit, result) : "The unit rejects a part of its model";
    for (const std::string& entry : entries)
        error += "; " + entry;
    return false;
}

constexpr int ownBits = sizeof(void*) * 8;

std::string notRegistered(const std::string& progId) {
    return "No component is registered as \"" + progId + "\" for " + std::to_string(ownBits) +
           "-bit programs: check \"progId\" in the case, and register the unit's module with regsvr32";
}

} // namespace

UnitSession::~UnitSession() {
    if (utilities_ && profile_.terminates)
        utilities_->Terminate();
}

bool UnitSession::start(const LogSink& log, std::string& error) {
    // Nothing is known about other units.
    fault_ = isOurs() ? Fault::machine : Fault::calculation;
    if (!create(error))
        return false;
    for (const StartupStep step : profile_.startup)
        if (!doStep(step, log, error))
            return false;
    fault_ = Fault::model;
    return setParameters(unit_.get(), case_.parameters, error);
}

bool UnitSession::canRestart() const {
    return unit_ && isOurs() && !std::holds_alternative<std::monostate>(case_.model);
}

bool UnitSession::restart(std::string& error) {
    fault_ = Fault::model;
    return reloadModel(error) && setParameters(unit_.get(), case_.parameters, error);
}

bool UnitSession::isOurs() const {
    return case_.progId == UnitCase().progId;
}

bool UnitSession::terminate(std::string& error) {
    return checked("Terminate", utilities_->Terminate(), error);
}

void UnitSession::release() {
    utilities_.reset();
    unit_.reset();
}

bool UnitSession::create(std::string& error) {
    CLSID classId{};
    HRESULT result = CLSIDFromString(widen(case_.progId, CP_UTF8).c_str(), &classId);
    if (FAILED(result)) {
        error = notRegistered(case_.progId);
        return false;
    }
    ComRef<IUnknown> object;
    result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IUnknown,
                              object.putVoid());
    if (result == REGDB_E_CLASSNOTREG) {
        error = notRegistered(case_.progId);
        return false;
    }
    if (FAILED(result)) {
        error = "The unit \"" + case_.progId +
                "\" cannot be created: " + narrow(FormatHresultText(result), CP_UTF8);
        return false;
    }
    unit_ = object.as<ICapeUnit>();
    utilities_ = object.as<ICapeUtilities>();
    if (!unit_ || !utilities_) {
        error = "\"" + case_.progId + "\" is not a unit operation";
        return false;
    }
    if (const auto identification = object.as<ICapeIdentification>())
        identification->put_ComponentName(Bstr(widen(case_.name, CP_UTF8)).get());
    return true;
}

bool UnitSession::doStep(StartupStep step, const LogSink& log, std::string& error) {
    switch (step) {
    case StartupStep::context:
        return giveContext(log, error);
    case StartupStep::load:
        if (loadModel(error))
            return true;
        fault_ = Fault::model;
        return false;
    case StartupStep::initialize:
        return checked("Initialize", utilities_->Initialize(), error);
    }
    return false;
}

bool UnitSession::giveContext(const LogSink& log, std::string& error) {
    const auto context = SimulationContext::create(log);
    return checked("put_simulationContext", utilities_->put_simulationContext(context.get()), error);
}

bool UnitSession::loadModel(std::string& error) {
    if (const auto* model = std::get_if<UnitModel>(&case_.model))
        return loadFromBag(unit_.get(), *model, case_, error);
    if (const auto* file = std::get_if<ModelFile>(&case_.model))
        return loadModelFile(unit_.get(), *file, error);
    return true;
}

bool UnitSession::reloadModel(std::string& error) {
    const auto* model = std::get_if<UnitModel>(&case_.model);
    if (!model)
        return loadModel(error);
    // A load from a bag adds to the unit's reports; Calculate resets their texts.
    UnitModel again = *model;
    again.reports.clear();
    return loadFromBag(unit_.get(), again, case_, error);
}

bool UnitSession::checked(const char* call, HRESULT result, std::string& error) const {
    if (FAILED(result))
        error = callFailure(call, unit_.get(), result);
    return SUCCEEDED(result);
}

} // namespace solvane::host
