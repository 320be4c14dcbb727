#pragma once

#include "com/ComRef.h"
#include "com/Text.h"
#include "unit/model/CapeOpenBaseObject.h"

#include <cstdint>
#include <span>

namespace solvane {

/// The texts for an item that a collection rejects; each pair is an error's name and description.
struct ItemRefusals {
    const wchar_t* unknownName[2];
    const wchar_t* invalidId[2];
    const wchar_t* outOfRange;
};

/// ICapeCollection's Item: returns the item with that name (the first of several, ignoring case) or that
/// index, from 1. A text is always a name, never a number. Errors are raised on `owner`.
template <class T>
HRESULT giveItem(CapeOpenBaseObject& owner, std::span<const ComRef<T>> items, const VARIANT& id,
                 const ItemRefusals& refusals, IDispatch** item) {
    const auto refuse = [&](const wchar_t* name, const wchar_t* description) {
        return owner.raise(name, description, L"Item", L"ICapeCollection");
    };
    Variant direct;
    if (!readArgument(id, direct))
        return refuse(refusals.invalidId[0], refusals.invalidId[1]);
    std::size_t index = 0;
    if (direct.type() == VT_BSTR) {
        while (index < items.size() && compareNoCase(items[index]->componentName, direct.text()) != 0)
            ++index;
        if (index == items.size())
            return refuse(refusals.unknownName[0], refusals.unknownName[1]);
    } else {
        Variant number;
        VariantChangeType(number.put(), direct.in(), VARIANT_NOVALUEPROP, VT_I4);
        if (number.type() != VT_I4)
            return refuse(refusals.invalidId[0], refusals.invalidId[1]);
        index = static_cast<std::uint32_t>(number.integer()) - std::uint32_t{1};
        if (index >= items.size())
            return refuse(refusals.outOfRange, refusals.outOfRange);
    }
    items[index]->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(item));
    return S_OK;
}

} // namespace solvane
