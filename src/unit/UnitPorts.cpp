// The unit as the collection of its ports.

#include "CSolvaneUnitOp.h"
#include "CollectionItem.h"
#include "persistence/PrivateModel.h"

namespace solvane {

namespace {

constexpr wchar_t collection[] = L"ICapeCollection";

constexpr ItemRefusals refusals{
    {L"Undefined port name", L"No port matches the specified name"},
    {L"Invalid port specification", L"Invalid port specification (expected 1-based index or name)"},
    L"Port index out of range",
};

} // namespace

STDMETHODIMP CSolvaneUnitOp::get_ports(IDispatch** ports) {
    return border([&]() -> HRESULT {
        if (!prepareResult(ports))
            return E_POINTER;
        if (!startupOk)
            return raiseStopped(L"get_ports", L"ICapeUnit");
        const ActivityScope scope(*this, UnitActivity::loading);
        LoadPrivateModel(*this, scope);
        QueryInterface(IID_IDispatch, reinterpret_cast<void**>(ports));
        return S_OK;
    });
}

STDMETHODIMP CSolvaneUnitOp::Item(VARIANT id, IDispatch** item) {
    return border([&]() -> HRESULT {
        const bool hasPlace = prepareResult(item);
        if (!startupOk)
            return raiseStopped(L"Item", collection);
        if (!hasPlace)
            return E_POINTER;
        const std::vector<ComRef<CPort>> ports = allPorts();
        return giveItem(*this, std::span(ports), id, refusals, item);
    });
}

STDMETHODIMP CSolvaneUnitOp::Count(LONG* count) {
    return border([&]() -> HRESULT {
        if (!prepareResult(count))
            return E_POINTER;
        if (!startupOk)
            return raiseStopped(L"Count", collection);
        *count = static_cast<LONG>(feedPorts.size() + productPorts.size());
        return S_OK;
    });
}

} // namespace solvane
