#include "CPort.h"

#include "Unit.h"

#include <array>

namespace solvane {

namespace {

constexpr wchar_t unitPort[] = L"ICapeUnitPort";

} // namespace

std::span<const InterfaceEntry> CPort::interfaceTable() {
    static constexpr std::array table{
        interfaceEntry<CPort, IDispatch, ICapeUnitPort>(),
        interfaceEntry<CPort, ICapeUnitPort>(),
        interfaceEntry<CPort, ECapeRoot>(),
        interfaceEntry<CPort, ECapeUnknown>(),
        interfaceEntry<CPort, ECapeUser>(),
        interfaceEntry<CPort, ICapeIdentification>(),
    };
    return table;
}

STDMETHODIMP CPort::Connect(IDispatch* object) {
    return border([&]() -> HRESULT {
        static_cast<ICapeUnitPort*>(this)->Disconnect();
        if (!object)
            return S_OK;
        materialObject11 = queryInterface<ICapeThermoMaterial>(object);
        if (materialObject11)
            return S_OK;
        materialObject10 = queryInterface<ICapeThermoMaterialObject>(object);
        if (materialObject10)
            return S_OK;
        return raise(L"Failed to get interface",
                     L"Failed to get version 1.0 or 1.1 thermo material object interface", L"Connect",
                     L"ICapeUnit");
    });
}

STDMETHODIMP CPort::Disconnect() {
    return border([&]() -> HRESULT {
        if (ownerUnit)
            ownerUnit->invalidate();
        materialObject11.reset();
        materialObject10.reset();
        compounds.reset();
        phases.reset();
        equilibriumRoutine.reset();
        return S_OK;
    });
}

STDMETHODIMP CPort::get_connectedObject(IDispatch** object) {
    return border([&]() -> HRESULT {
        if (!prepareResult(object))
            return E_POINTER;
        if (materialObject10)
            *object = ComRef<IDispatch>(materialObject10.get()).release();
        else if (materialObject11)
            *object = ComRef<IDispatch>(materialObject11.get()).release();
        else
            return raise(L"Not connected", L"Port is not connected", L"get_connectedObject", unitPort);
        return S_OK;
    });
}

STDMETHODIMP CPort::get_portType(CapePortType* portType) {
    if (!prepareResult(portType))
        return E_POINTER;
    *portType = CAPE_MATERIAL;
    return S_OK;
}

STDMETHODIMP CPort::get_direction(CapePortDirection* direction) {
    if (!prepareResult(direction))
        return E_POINTER;
    *direction = isFeed ? CAPE_INLET : CAPE_OUTLET;
    return S_OK;
}

} // namespace solvane
