#include "HostObject.h"

#include "com/TextProperty.h"

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
    return getText(known == codeNames.end() ? L"" : known->name, name);
}

STDMETHODIMP HostObject::get_code(LONG* code) {
    if (!prepareResult(code))
        return E_POINTER;
    *code = failure_.code;
    return S_OK;
}

STDMETHODIMP HostObject::get_description(BSTR* description) {
    return getText(failure_.text, description);
}

STDMETHODIMP HostObject::get_scope(BSTR* scope) {
    return getText(componentName, scope);
}

STDMETHODIMP HostObject::get_interfaceName(BSTR* interfaceName) {
    return getText(failedInterface_, interfaceName);
}

STDMETHODIMP HostObject::get_operation(BSTR* operation) {
    return getText(failedOperation_, operation);
}

STDMETHODIMP HostObject::get_moreInfo(BSTR* moreInfo) {
    return getText(L"", moreInfo);
}

STDMETHODIMP HostObject::get_ComponentName(BSTR* name) {
    return getText(componentName, name);
}

STDMETHODIMP HostObject::put_ComponentName(BSTR name) {
    return putText(name, componentName);
}

STDMETHODIMP HostObject::get_ComponentDescription(BSTR* description) {
    return getText(componentDescription, description);
}

STDMETHODIMP HostObject::put_ComponentDescription(BSTR description) {
    return putText(description, componentDescription);
}

} // namespace solvane::host
