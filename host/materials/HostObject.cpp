#include "HostObject.h"

#include "com/Variant.h"

#include <algorithm>
#include <array>

namespace solvane::host {

namespace {

struct CodeName {
    CapeErrorInterfaceHR code;
    const wchar_t* name;
};

/// The codes that this host returns.
constexpr std::array codeNames{
    CodeName{ECapeInvalidArgumentHR, L"ECapeInvalidArgument"},
    CodeName{ECapeNoImplHR, L"ECapeNoImpl"},
    CodeName{ECapeComputationHR, L"ECapeComputation"},
    CodeName{ECapeSolvingErrorHR, L"ECapeSolvingError"},
    CodeName{ECapeThrmPropertyNotAvailableHR, L"ECapeThrmPropertyNotAvailable"},
};

HRESULT giveText(std::wstring_view text, BSTR* result) {
    return border([&]() -> HRESULT {
        if (!prepareResult(result))
            return E_POINTER;
        *result = newBstr(text);
        return S_OK;
    });
}

HRESULT takeText(BSTR text, std::wstring& field) {
    return border([&]() -> HRESULT {
        field = std::wstring(viewOf(text));
        return S_OK;
    });
}

} // namespace

HRESULT HostObject::keep(Failure failure, const wchar_t* interfaceName, const wchar_t* operation) {
    failure_ = std::move(failure);
    failedInterface_ = interfaceName;
    failedOperation_ = operation;
    return failure_.code;
}

HRESULT HostObject::notImplemented(const wchar_t* interfaceName, const wchar_t* operation) {
    return call(interfaceName, operation, [&](Failure& failure) {
        return fail(failure, ECapeNoImplHR,
                    std::wstring(operation) + L" is not implemented by this host's materials");
    });
}

STDMETHODIMP HostObject::get_name(BSTR* name) {
    const auto known = std::ranges::find_if(
        codeNames, [&](const CodeName& row) { return static_cast<HRESULT>(row.code) == failure_.code; });
    return giveText(known == codeNames.end() ? L"" : known->name, name);
}

STDMETHODIMP HostObject::get_code(LONG* code) {
    if (!prepareResult(code))
        return E_POINTER;
    *code = failure_.code;
    return S_OK;
}

STDMETHODIMP HostObject::get_description(BSTR* description) {
    return giveText(failure_.text, description);
}

STDMETHODIMP HostObject::get_scope(BSTR* scope) {
    return giveText(componentName, scope);
}

STDMETHODIMP HostObject::get_interfaceName(BSTR* interfaceName) {
    return giveText(failedInterface_, interfaceName);
}

STDMETHODIMP HostObject::get_operation(BSTR* operation) {
    return giveText(failedOperation_, operation);
}

STDMETHODIMP HostObject::get_moreInfo(BSTR* moreInfo) {
    return giveText(L"", moreInfo);
}

STDMETHODIMP HostObject::get_ComponentName(BSTR* name) {
    return giveText(componentName, name);
}

STDMETHODIMP HostObject::put_ComponentName(BSTR name) {
    return takeText(name, componentName);
}

STDMETHODIMP HostObject::get_ComponentDescription(BSTR* description) {
    return giveText(componentDescription, description);
}

STDMETHODIMP HostObject::put_ComponentDescription(BSTR description) {
    return takeText(description, componentDescription);
}

} // namespace solvane::host
