#include "CSolvaneUnitOp.h"

#include "ClassIds.h"
#include "HostKind.h"
#include "LicenceCheck.h"
#include "ReportNames.h"
#include "channel/ChannelNames.h"
#include "com/Text.h"
#include "persistence/PrivateModel.h"
#include "persistence/PropertyBag.h"
#include "persistence/StreamPersistence.h"
#include "runtime/MatlabThread.h"
#include "runtime/MexPlacement.h"
#include "runtime/WorkingFolder.h"
#include "ui/Edit.h"

#include <array>

namespace solvane {

namespace {

constexpr wchar_t utilities[] = L"ICapeUtilities";
constexpr wchar_t persistPropertyBag[] = L"IPersistPropertyBag";
constexpr wchar_t persistStream[] = L"IPersistStream";

// PRO/II is to save the unit through its stream.
bool isPropertyBagOffered() {
    return detectHost() != HostKind::proII;
}

Handle createAutoResetEvent(const std::string& name) {
    return Handle(CreateEventA(nullptr, FALSE, FALSE, name.empty() ? nullptr : name.c_str()));
}

} // namespace

std::span<const InterfaceEntry> CSolvaneUnitOp::interfaceTable() {
    static constexpr std::array table{
        interfaceEntry<CSolvaneUnitOp, IDispatch, ICapeUnit>(),
        interfaceEntry<CSolvaneUnitOp, ICapeCollection>(),
        interfaceEntry<CSolvaneUnitOp, ICapeUnit>(),
        interfaceEntry<CSolvaneUnitOp, ICapeUnitReport>(),
        interfaceEntry<CSolvaneUnitOp, ICapeUtilities>(),
        interfaceEntry<CSolvaneUnitOp, IPersistStream>(),
        interfaceEntry<CSolvaneUnitOp, IPersistPropertyBag>(isPropertyBagOffered),
        interfaceEntry<CSolvaneUnitOp, ECapeRoot>(),
        interfaceEntry<CSolvaneUnitOp, ECapeUnknown>(),
        interfaceEntry<CSolvaneUnitOp, ECapeUser>(),
        interfaceEntry<CSolvaneUnitOp, ICapeIdentification>(),
    };
    return table;
}

// ---- birth and end

CSolvaneUnitOp::CSolvaneUnitOp() : numericLocale(_create_locale(LC_NUMERIC, "C")) {
    componentName = L"Solvane Unit Operation";
    componentDescription = L"Unit operation using Matlab script for calculations";
    selectedReport = outputReportName;
    outputText = L"Unit operation has not yet been run...";
}

CSolvaneUnitOp::~CSolvaneUnitOp() {
    numericLocale.reset();
    stop(); // of a unit that was never finished
}

HRESULT CSolvaneUnitOp::FinalConstruct() {
    auto* collection = new CComObject<CParameterCollection>();
    collection->ownerUnit = this;
    parameterCollection = ComRef<CParameterCollection>(collection);
    std::string error;
    if (!build(error)) {
        startupError = error;
        startupOk = false;
    }
    return S_OK;
}

bool CSolvaneUnitOp::build(std::string& error) {
    const auto fail = [&](const char* text) {
        error = text;
        return false;
    };

    GUID guid;
    if (FAILED(CoCreateGuid(&guid)))
        return fail("CoCreateGuid failed");
    LPOLESTR guidText = nullptr;
    if (FAILED(StringFromCLSID(guid, &guidText)))
        return fail("StringFromCLSID failed");
    unitId = narrow(guidText, CP_UTF8);
    CoTaskMemFree(guidText);

    if (!createWorkingFolder(*this, error))
        return false;
    if (!isLicensed(error) || !placeMexFile(error))
        return false;
    if (!placeResourceFile(*this, runScriptResource, "runUnit.m", error) ||
        !placeResourceFile(*this, defaultScriptResource, "calc.m", error))
        return false;

    workerCommandEvent = createAutoResetEvent({});
    workerDoneEvent = createAutoResetEvent({});
    workerCancelEvent.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!workerCommandEvent || !workerDoneEvent || !workerCancelEvent)
        return fail("Failed to create event for internal communication");
    workerThread = startMatlabThread(*this);
    if (!workerThread)
        return fail("Failed to create Matlab execution thread");

    requestEvent = createAutoResetEvent(requestEventName(unitId));
    replyEvent = createAutoResetEvent(replyEventName(unitId));
    if (!requestEvent || !replyEvent)
        return fail("Failed to create event for data communication");

    workerCommand = WorkerCommand::start;
    SetEvent(workerCommandEvent.get());
    waitForWorker();
    if (!startupOk)
        error = startupError;
    return startupOk;
}

/// Until its command is done. At the process's end the system ends the thread first, and a host that holds
/// the unit in another module releases it after that.
void CSolvaneUnitOp::waitForWorker() const {
    const HANDLE ends[] = {workerDoneEvent.get(), workerThread.get()};
    WaitForMultipleObjects(2, ends, FALSE, INFINITE);
}

STDMETHODIMP CSolvaneUnitOp::Terminate() {
    if (terminated || activities == 0)
        return stop();
    return border([&]() -> HRESULT {
        forbidUse();
        terminationAsked = true;
        SetEvent(workerCancelEvent.get());
        return S_OK;
    });
}

void CSolvaneUnitOp::forbidUse() {
    startupError = "Terminate has been called on unit operation";
    startupOk = false;
}

HRESULT CSolvaneUnitOp::stop() {
    return border([&]() -> HRESULT {
        if (terminated)
            return S_OK;
        forbidUse(); // first: a host's object that is released may call the unit
        terminated = true;
        simulationContext.reset();
        diagnostic.reset();
        requestEvent.reset();
        replyEvent.reset();
        releasePorts();
        if (parameterCollection)
            parameterCollection->ownerUnit = nullptr;
        parameterCollection.reset();
        releaseParameters();
        if (workerThread) {
            workerCommand = WorkerCommand::quit;
            SetEvent(workerCommandEvent.get());
            waitForWorker();
        }
        workerCommandEvent.reset();
        workerDoneEvent.reset();
        workerCancelEvent.reset();
        workerThread.reset();
        deleteWorkingFolder(*this);
        return S_OK;
    });
}

HRESULT CSolvaneUnitOp::raiseStopped(const wchar_t* scope, const wchar_t* interfaceName) {
    const std::wstring text = widen(startupError);
    return raise(text, text, scope, interfaceName);
}

void CSolvaneUnitOp::releasePorts() {
    for (auto* ports : {&feedPorts, &productPorts})
        for (const ComRef<CPort>& port : std::exchange(*ports, {})) { // a material's release may call
            port->Disconnect();
            port->ownerUnit = nullptr;
        }
}

void CSolvaneUnitOp::releaseParameters() {
    for (const ComRef<CParameter>& parameter : parameters)
        parameter->ownerUnit = nullptr;
    parameters.clear();
}

ComRef<CPort> CSolvaneUnitOp::CreatePort(bool isFeed, const std::wstring& name) {
    ComRef<CPort> port(new CComObject<CPort>());
    port->isFeed = isFeed;
    port->ownerUnit = this;
    port->componentName = name;
    return port;
}

ComRef<CParameter> CSolvaneUnitOp::CreateParameter(ParameterKind kind, bool isInput,
                                                   const std::wstring& name) {
    ComRef<CParameter> parameter(new CComObject<CParameter>());
    parameter->ownerUnit = this;
    parameter->parameterKind = kind;
    parameter->isInput = isInput;
    parameter->componentName = name;
    parameter->componentDescription = L"Solvane unit operation parameter";
    return parameter;
}

ComRef<ICapeDiagnostic> CSolvaneUnitOp::hostLog() {
    if (!diagnostic) {
        const ComRef<IDispatch> context = simulationContext; // which the host may replace meanwhile
        diagnostic = context.as<ICapeDiagnostic>();
    }
    return diagnostic;
}

// ---- ICapeUtilities

STDMETHODIMP CSolvaneUnitOp::get_parameters(IDispatch** result) {
    return border([&]() -> HRESULT {
        // A stopped unit raises before a null pointer is looked at, unlike in get_ports.
        const bool hasPlace = prepareResult(result);
        if (!startupOk)
            return raiseStopped(L"get_parameters", utilities);
        if (!hasPlace)
            return E_POINTER;
        const ActivityScope scope(*this, UnitActivity::loading);
        LoadPrivateModel(*this);
        parameterCollection->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(result));
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::put_simulationContext(IDispatch* context) {
    return border([&]() -> HRESULT {
        simulationContext.reset();
        diagnostic.reset();
        if (!startupOk)
            return raiseStopped(L"put_simulationContext", utilities);
        simulationContext = ComRef<IDispatch>(context);
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::Initialize() {
    return border([&]() -> HRESULT {
        if (startupOk)
            return S_OK;
        return raise(L"Initialization failed", widen(startupError), L"Initialize", utilities);
    });
}

STDMETHODIMP CSolvaneUnitOp::Edit() {
    return border([&]() -> HRESULT {
        std::wstring refusal;
        if (!mayBegin(*this, UnitActivity::editing, refusal))
            return raise(refusal, refusal, L"Edit", utilities);
        const ActivityScope scope(*this, UnitActivity::editing);
        LoadPrivateModel(*this);
        modelEdited = false;
        if (!startupOk)
            return raiseStopped(L"Edit", utilities);
        const HRESULT edited = editUnit(*this);
        StorePrivateModel(*this);
        return edited;
    });
}

// ---- persistence

STDMETHODIMP CSolvaneUnitOp::GetClassID(CLSID* classId) {
    if (!prepareResult(classId))
        return E_POINTER;
    *classId = solvaneUnitOpClass;
    return S_OK;
}

STDMETHODIMP CSolvaneUnitOp::InitNew() {
    return S_OK;
}

template <class Body>
HRESULT CSolvaneUnitOp::persist(UnitActivity activity, const wchar_t* scope, const wchar_t* interfaceName,
                                Body&& body) {
    return border([&]() -> HRESULT {
        // A unit that could not even make its working folder, or is terminated, has nowhere to put a model.
        if (!hasWorkingFolder())
            return raiseStopped(scope, interfaceName);
        std::wstring refusal;
        if (!mayBegin(*this, activity, refusal))
            return raise(refusal, refusal, scope, interfaceName);
        const ActivityScope activityScope(*this, activity);
        std::string error;
        if (activity == UnitActivity::loading && !restoreWorkingFolder(*this, error))
            return raise(widen(error), widen(error), scope, interfaceName);
        return body();
    });
}

STDMETHODIMP CSolvaneUnitOp::Load(IPropertyBag* bag, IErrorLog* errorLog) {
    return persist(UnitActivity::loading, L"Load", persistPropertyBag,
                   [&] { return loadFromBag(*this, bag, errorLog); });
}

STDMETHODIMP CSolvaneUnitOp::Save(IPropertyBag* bag, BOOL, BOOL) {
    return persist(UnitActivity::saving, L"Save", persistPropertyBag, [&] { return saveToBag(*this, bag); });
}

STDMETHODIMP CSolvaneUnitOp::IsDirty() {
    return modified ? S_OK : S_FALSE;
}

STDMETHODIMP CSolvaneUnitOp::Load(IStream* stream) {
    return persist(UnitActivity::loading, L"Load", persistStream,
                   [&] { return loadFromStream(*this, stream); });
}

STDMETHODIMP CSolvaneUnitOp::Save(IStream* stream, BOOL) {
    return persist(UnitActivity::saving, L"Save", persistStream, [&] { return saveToStream(*this, stream); });
}

STDMETHODIMP CSolvaneUnitOp::GetSizeMax(ULARGE_INTEGER* size) {
    if (!prepareResult(size))
        return E_POINTER;
    return persist(UnitActivity::saving, L"GetSizeMax", persistStream,
                   [&] { return sizeInStream(*this, *size); });
}

} // namespace solvane
