#pragma once

#include "CParameterCollection.h"
#include "com/ComRef.h"
#include "unit/model/Unit.h"
#include "unit/model/UnitActivity.h"

#include <ocidl.h>

#include <string>

namespace solvane {

/// The unit operation that a host creates: the interfaces of a Unit. Its methods call the folders that work
/// on the unit.
class CSolvaneUnitOp : public DispatchImpl<ICapeCollection>,
                       public DispatchImpl<ICapeUnit>,
                       public DispatchImpl<ICapeUnitReport>,
                       public DispatchImpl<ICapeUtilities>,
                       public Unit,
                       public IPersistPropertyBag,
                       public IPersistStream {
public:
    ~CSolvaneUnitOp() override;

    ComRef<CParameterCollection> parameterCollection;

    // One of each for all interfaces; the form in which the object is created implements them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override = 0;
    STDMETHODIMP_(ULONG) AddRef() override = 0;
    STDMETHODIMP_(ULONG) Release() override = 0;

    static std::span<const InterfaceEntry> interfaceTable();
    /// Builds the whole unit and starts Matlab. Returns success even if that fails: then `startupOk` is false
    /// and `startupError` has the reason.
    HRESULT FinalConstruct();
    void FinalRelease() { stop(); }

    HRESULT stop() override;

    // ICapeCollection: the ports, feeds first
    STDMETHODIMP Item(VARIANT id, IDispatch** item) override;
    STDMETHODIMP Count(LONG* count) override;
    // ICapeUnit
    STDMETHODIMP get_ports(IDispatch** ports) override;
    STDMETHODIMP get_ValStatus(CapeValidationStatus* status) override;
    STDMETHODIMP Calculate() override;
    STDMETHODIMP Validate(BSTR* message, VARIANT_BOOL* isValid) override;
    // ICapeUnitReport
    STDMETHODIMP get_reports(VARIANT* reports) override;
    STDMETHODIMP get_selectedReport(BSTR* report) override;
    STDMETHODIMP put_selectedReport(BSTR report) override;
    STDMETHODIMP ProduceReport(BSTR* message) override;
    // ICapeUtilities
    STDMETHODIMP get_parameters(IDispatch** result) override;
    STDMETHODIMP put_simulationContext(IDispatch* context) override;
    STDMETHODIMP Initialize() override;
    STDMETHODIMP Terminate() override;
    STDMETHODIMP Edit() override;
    // IPersist
    STDMETHODIMP GetClassID(CLSID* classId) override;
    // IPersistPropertyBag
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* errorLog) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;
    // IPersistStream
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;

private:
    [[nodiscard]] bool build(std::string& error);
    void waitForWorker() const;
    void forbidUse();
    /// Reads or writes the model through a persistence interface, if the unit's state allows it.
    template <class Body>
    HRESULT persist(UnitActivity activity, const wchar_t* scope, const wchar_t* interfaceName, Body&& body);
    /// Fails a call on a unit that may not be used, with `startupError`.
    HRESULT raiseStopped(const wchar_t* scope, const wchar_t* interfaceName);
};

} // namespace solvane
