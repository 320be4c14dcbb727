#include "CSolvaneUnitOp.h"

#include "ClassIds.h"
#include "channel/ChannelNames.h"
#include "com/Failure.h"
#include "com/Text.h"
#include "persistence/BagPersistence.h"
#include "persistence/PrivateModel.h"
#include "persistence/StreamPersistence.h"
#include "runtime/MatlabThread.h"
#include "runtime/MexPlacement.h"
#include "ui/Edit.h"
#include "unit/model/HostKind.h"
#include "unit/model/LicenceCheck.h"

#include <array>

namespace solvane {

namespace {

constexpr wchar_t utilities[] = L"ICapeUtilities";
constexpr wchar_t persistPropertyBag[] = L"IPersistPropertyBag";
constexpr wchar_t persistStream[] = L"IPersistStream";

// Makes PRO/II save the unit through its stream.
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

// ---- construction and end

CSolvaneUnitOp::~CSolvaneUnitOp() {
    stop(); // for a unit that was never completed
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
    GUID guid;
    if (FAILED(CoCreateGuid(&guid)))
        return fail(error, "CoCreateGuid failed");
    TaskText guidText;
    if (FAILED(StringFromCLSID(guid, guidText.put())))
        return fail(error, "StringFromCLSID failed");
    unitId = narrow(guidText.get(), CP_UTF8);

    std::string temporaryFolder;
    if (!findTemporaryFolder(temporaryFolder, error))
        return false;
    terminated = false; // from here on, there is something to terminate
    workingFolder = WorkingFolder(temporaryFolder, unitId, error);
    if (!workingFolder || !isLicensed(error) || !placeMexFile(error) || !workingFolder.placeScripts(error))
        return false;

    workerCommandEvent = createAutoResetEvent({});
    workerDoneEvent = createAutoResetEvent({});
    workerCancelEvent.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!workerCommandEvent || !workerDoneEvent || !workerCancelEvent)
        return fail(error, "Failed to create event for internal communication");
    workerThread = startMatlabThread(*this);
    if (!workerThread)
        return fail(error, "Failed to create Matlab execution thread");

    requestEvent = createAutoResetEvent(requestEventName(unitId));
    replyEvent = createAutoResetEvent(replyEventName(unitId));
    if (!requestEvent || !replyEvent)
        return fail(error, "Failed to create event for data communication");

    workerCommand = WorkerCommand::start;
    SetEvent(workerCommandEvent.get());
    waitForWorker();
    if (!startupOk)
        error = startupError;
    return startupOk;
}

/// Waits until the command is done. At the process's end the system ends the thread first, and a host that
/// holds the unit in another module releases it after that.
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
        forbidUse(); // first: the host's objects may call the unit when they are released
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
        workingFolder.reset();
        return S_OK;
    });
}

HRESULT CSolvaneUnitOp::raiseStopped(const wchar_t* scope, const wchar_t* interfaceName) {
    const std::wstring text = widen(startupError);
    return raise(text, text, scope, interfaceName);
}

// ---- ICapeUtilities

STDMETHODIMP CSolvaneUnitOp::get_parameters(IDispatch** result) {
    return border([&]() -> HRESULT {
        // Unlike get_ports, a stopped unit raises its error before it checks for a null pointer.
        const bool hasPlace = prepareResult(result);
        if (!startupOk)
            return raiseStopped(L"get_parameters", utilities);
        if (!hasPlace)
            return E_POINTER;
        const ActivityScope scope(*this, UnitActivity::loading);
        LoadPrivateModel(*this, scope);
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
        LoadPrivateModel(*this, scope);
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
        // A unit without a working folder, because it failed to start or is terminated, cannot hold a model.
        if (!canHoldModel())
            return raiseStopped(scope, interfaceName);
        std::wstring refusal;
        if (!mayBegin(*this, activity, refusal))
            return raise(refusal, refusal, scope, interfaceName);
        const ActivityScope activityScope(*this, activity);
        std::string error;
        if (activity == UnitActivity::loading && !workingFolder.isComplete()) {
            scriptDirty = true;
            if (!workingFolder.restore(error))
                return raise(widen(error), widen(error), scope, interfaceName);
        }
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
