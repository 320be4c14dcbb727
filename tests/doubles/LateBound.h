#pragma once

#include "com/ComRef.h"
#include "com/Variant.h"

#include <oaidl.h>

#include <string>
#include <vector>

namespace solvane {

/// A caller that knows an object's members by their names only, as a script does.
class LateBound {
public:
    explicit LateBound(IDispatch* object) : object_(object) {}

    /// The result of a call, with the exception record's code and text.
    struct Call {
        HRESULT result;
        Variant value;
        HRESULT code = S_OK;
        std::wstring description{};
    };
    /// The arguments are the caller's, the last one first.
    Call call(const wchar_t* member, WORD kind, std::vector<VARIANT> arguments = {}) const {
        DISPID id = 0;
        if (const HRESULT found = find(member, id); FAILED(found))
            return {found, {}};
        DISPID put = DISPID_PROPERTYPUT;
        const bool isPut = kind == DISPATCH_PROPERTYPUT;
        DISPPARAMS parameters{arguments.data(), isPut ? &put : nullptr, static_cast<UINT>(arguments.size()),
                              isPut ? 1u : 0u};
        EXCEPINFO exception{};
        Call call{};
        call.result = object_->Invoke(id, IID_NULL, LOCALE_NEUTRAL, kind, &parameters, call.value.put(),
                                      &exception, nullptr);
        call.code = exception.scode;
        call.description = viewOf(exception.bstrDescription);
        for (const BSTR text : {exception.bstrDescription, exception.bstrSource, exception.bstrHelpFile})
            SysFreeString(text);
        return call;
    }
    HRESULT find(const wchar_t* member, DISPID& id) const {
        auto* name = const_cast<LPOLESTR>(member);
        return object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_NEUTRAL, &id);
    }

private:
    ComRef<IDispatch> object_;
};

} // namespace solvane
