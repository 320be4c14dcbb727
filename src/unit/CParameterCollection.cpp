#include "CParameterCollection.h"

#include "CollectionItem.h"
#include "unit/model/Unit.h"

#include <array>

namespace solvane {

namespace {

constexpr ItemRefusals refusals{
    {L"Unknown parameter", L"Parameter by the given name does not exist"},
    {L"Invalid parameter specification", L"Invalid parameter specification (expected 1-based index or name)"},
    L"Parameter index out of range",
};

} // namespace

CParameterCollection::CParameterCollection() {
    componentName = L"ParameterCollection";
    componentDescription = L"Solvane Unit Operation Parameter Collection";
}

std::span<const InterfaceEntry> CParameterCollection::interfaceTable() {
    static constexpr std::array table{
        interfaceEntry<CParameterCollection, IDispatch, ICapeCollection>(),
        interfaceEntry<CParameterCollection, ICapeCollection>(),
        interfaceEntry<CParameterCollection, ECapeRoot>(),
        interfaceEntry<CParameterCollection, ECapeUnknown>(),
        interfaceEntry<CParameterCollection, ECapeUser>(),
        interfaceEntry<CParameterCollection, ICapeIdentification>(),
    };
    return table;
}

STDMETHODIMP CParameterCollection::Item(VARIANT id, IDispatch** item) {
    return border([&]() -> HRESULT {
        if (!prepareResult(item))
            return E_POINTER;
        std::span<const ComRef<CParameter>> parameters;
        if (ownerUnit)
            parameters = ownerUnit->parameters;
        return giveItem(*this, parameters, id, refusals, item);
    });
}

STDMETHODIMP CParameterCollection::Count(LONG* count) {
    if (!prepareResult(count))
        return E_POINTER;
    *count = ownerUnit ? static_cast<LONG>(ownerUnit->parameters.size()) : 0;
    return S_OK;
}

} // namespace solvane
