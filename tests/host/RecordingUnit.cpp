#include "RecordingUnit.h"

#include "com/ClassFactory.h"
#include "com/ComRef.h"
#include "com/Text.h"
#include "com/Variant.h"
#include "materials/HostObject.h"

#include <ocidl.h>

#include <array>

namespace solvane::host {

namespace {

void note(const std::string& call) {
    unitLog().calls.push_back(call);
    unitLog().threads.push_back(GetCurrentThreadId());
}

class RecordingPort : public DispatchImpl<ICapeUnitPort>, public HostObject {
public:
    CapePortDirection direction = CAPE_INLET;
    ComRef<IDispatch> material;

    static std::span<const InterfaceEntry> interfaceTable() {
        static constexpr std::array table{
            interfaceEntry<RecordingPort, IDispatch, ICapeUnitPort>(),
            interfaceEntry<RecordingPort, ICapeUnitPort>(),
            interfaceEntry<RecordingPort, ICapeIdentification>(),
        };
        return table;
    }
    STDMETHODIMP get_portType(CapePortType* type) override {
        return type ? *type = CAPE_MATERIAL, S_OK : E_POINTER;
    }
    STDMETHODIMP get_direction(CapePortDirection* result) override { return *result = direction, S_OK; }
    STDMETHODIMP get_connectedObject(IDispatch** object) override {
        *object = ComRef<IDispatch>(material).release();
        return S_OK;
    }
    STDMETHODIMP Connect(IDispatch* object) override {
        note("Connect");
        material = ComRef<IDispatch>(object);
        return S_OK;
    }
    STDMETHODIMP Disconnect() override {
        note("Disconnect");
        material.reset();
        return S_OK;
    }
};

class RecordingUnit : public DispatchImpl<ICapeUnit>,
                      public DispatchImpl<ICapeUtilities>,
                      public DispatchImpl<ICapeCollection>,
                      public IPersistPropertyBag,
                      public HostObject {
public:
    RecordingUnit() { ++unitLog().liveUnits; }
    ~RecordingUnit() override { --unitLog().liveUnits; }

    static std::span<const InterfaceEntry> interfaceTable() {
        static constexpr std::array table{
            interfaceEntry<RecordingUnit, IDispatch, ICapeUnit>(),
            interfaceEntry<RecordingUnit, ICapeUnit>(),
            interfaceEntry<RecordingUnit, ICapeUtilities>(),
            interfaceEntry<RecordingUnit, ICapeCollection>(),
            interfaceEntry<RecordingUnit, IPersistPropertyBag>(),
            interfaceEntry<RecordingUnit, ICapeIdentification>(),
            interfaceEntry<RecordingUnit, ECapeRoot>(),
            interfaceEntry<RecordingUnit, ECapeUser>(),
        };
        return table;
    }

    // ICapeUnit
    STDMETHODIMP get_ports(IDispatch** ports) override {
        *ports = ComRef<IDispatch>(static_cast<ICapeCollection*>(this)).release();
        return S_OK;
    }
    STDMETHODIMP get_ValStatus(CapeValidationStatus* status) override { return *status = CAPE_VALID, S_OK; }
    STDMETHODIMP Calculate() override {
        note("Calculate");
        unitLog().inCalculate();
        const ComRef<ICapeUnit> self(this); // its host may release it meanwhile
        return call(L"ICapeUnit", L"Calculate", [&](Failure& failure) {
            if (!unitLog().calculateFailure.empty())
                return fail(failure, HRESULT(ECapeUnknownHR), unitLog().calculateFailure);
            IDispatch* feed = feed_->material.get();
            return unitLog().producesNothing ||
                   queryInterface<ICapeThermoMaterial>(product_->material.get())->CopyFromMaterial(&feed) ==
                       S_OK;
        });
    }
    STDMETHODIMP Validate(BSTR* message, VARIANT_BOOL* isValid) override {
        note("Validate");
        *message = newBstr(unitLog().invalidMessage);
        *isValid = unitLog().invalidMessage.empty() ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    // ICapeUtilities
    STDMETHODIMP get_parameters(IDispatch** parameters) override { return *parameters = nullptr, S_OK; }
    STDMETHODIMP put_simulationContext(IDispatch* context) override {
        note("context");
        const auto diagnostic = queryInterface<ICapeDiagnostic>(context);
        return diagnostic->LogMessage(Bstr(L"gr\u00fc\u00dfe").get());
    }
    STDMETHODIMP Initialize() override {
        note("Initialize");
        return call(L"ICapeUtilities", L"Initialize", [&](Failure& failure) {
            return unitLog().initializeFailure.empty() ||
                   fail(failure, HRESULT(ECapeUnknownHR), unitLog().initializeFailure);
        });
    }
    STDMETHODIMP Terminate() override {
        note("Terminate");
        return S_OK;
    }
    STDMETHODIMP Edit() override { return E_NOTIMPL; }
    // ICapeCollection
    STDMETHODIMP Item(VARIANT id, IDispatch** item) override {
        return call(L"ICapeCollection", L"Item", [&](Failure& failure) {
            LONG number = 0;
            for (const auto& port : {feed_, product_})
                if (id.vt == VT_I4 ? id.lVal == ++number : viewOf(id.bstrVal) == port->componentName) {
                    *item = ComRef<IDispatch>(static_cast<ICapeUnitPort*>(port.get())).release();
                    return true;
                }
            return fail(failure, HRESULT(ECapeUnknownHR), L"no such port");
        });
    }
    STDMETHODIMP Count(LONG* count) override { return *count = 2, S_OK; }
    // IPersistPropertyBag
    STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }
    STDMETHODIMP InitNew() override { return S_OK; }
    STDMETHODIMP Load(IPropertyBag*, IErrorLog* errorLog) override {
        note("Load");
        if (unitLog().loadEntry.empty())
            return S_OK;
        const Bstr text(unitLog().loadEntry);
        EXCEPINFO exception{};
        exception.bstrDescription = text.get();
        return errorLog->AddError(L"files", &exception);
    }
    STDMETHODIMP Save(IPropertyBag*, BOOL, BOOL) override { return E_NOTIMPL; }

private:
    static ComRef<CComObject<RecordingPort>> makePort(const wchar_t* name, CapePortDirection direction) {
        const ComRef port(new CComObject<RecordingPort>());
        port->componentName = name;
        port->direction = direction;
        return port;
    }

    ComRef<CComObject<RecordingPort>> feed_ = makePort(L"in", CAPE_INLET);
    ComRef<CComObject<RecordingPort>> product_ = makePort(L"out", CAPE_OUTLET);
};

} // namespace

UnitLog& unitLog() {
    static UnitLog log;
    return log;
}

RecordingUnitClass::RecordingUnitClass() {
    unitLog() = {};
    ComRef<IUnknown> factory;
    createClassFactory(createInstance<RecordingUnit>, factory.putVoid());
    CLSID classId{};
    CLSIDFromString(widen(recordingUnit).c_str(), &classId);
    CoRegisterClassObject(classId, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration_);
}

RecordingUnitClass::~RecordingUnitClass() {
    CoRevokeClassObject(registration_);
}

} // namespace solvane::host
