/// The bodies of an interface's text properties: get_ copies a field into a new BSTR, put_ copies the
/// caller's text into a field.
#pragma once

#include "Border.h"
#include "Variant.h"

#include <string>
#include <string_view>

namespace solvane {

inline HRESULT getText(std::wstring_view field, BSTR* result) {
    return border([&]() -> HRESULT {
        if (!prepareResult(result))
            return E_POINTER;
        *result = newBstr(field);
        return S_OK;
    });
}

inline HRESULT putText(BSTR text, std::wstring& field) {
    return border([&]() -> HRESULT {
        field = std::wstring(callersText(text)); // a copy first: the text may be the field's own
        return S_OK;
    });
}

} // namespace solvane
