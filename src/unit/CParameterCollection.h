#pragma once

#include "unit/model/CapeOpenBaseObject.h"

namespace solvane {

class Unit;

/// The host's view of the unit's list of parameters. It reads the unit's list, so it always shows the current
/// parameters.
class CParameterCollection : public DispatchImpl<ICapeCollection>, public CapeOpenBaseObject {
public:
    CParameterCollection();

    /// Not counted. Null for a collection that no unit made.
    Unit* ownerUnit = nullptr;

    // One of each for all interfaces; the form in which the object is created implements them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override = 0;
    STDMETHODIMP_(ULONG) AddRef() override = 0;
    STDMETHODIMP_(ULONG) Release() override = 0;

    static std::span<const InterfaceEntry> interfaceTable();
    HRESULT FinalConstruct() { return S_OK; }

    // ICapeCollection
    STDMETHODIMP Item(VARIANT id, IDispatch** item) override;
    STDMETHODIMP Count(LONG* count) override;
};

} // namespace solvane
