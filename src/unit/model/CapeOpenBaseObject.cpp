#include "CapeOpenBaseObject.h"

#include "com/TextProperty.h"

namespace solvane {

namespace {

constexpr wchar_t errorSource[] = L"SolvaneUnitOperation.SolvaneUnitOp";

/// Sets the thread's error object, where late-bound and some early-bound callers look for a failure's text.
void setThreadsError(const std::wstring& description) {
    ComRef<ICreateErrorInfo> error;
    if (FAILED(CreateErrorInfo(error.put())))
        return;
    error->SetSource(const_cast<LPOLESTR>(errorSource));
    error->SetDescription(const_cast<LPOLESTR>(description.c_str()));
    SetErrorInfo(0, error.as<IErrorInfo>().get());
}

} // namespace

void CapeOpenBaseObject::SetError(std::wstring name, std::wstring description, std::wstring scope,
                                  std::wstring interfaceName) {
    errorName = std::move(name);
    errorDescription = std::move(description);
    errorScope = std::move(scope);
    errorInterface = std::move(interfaceName);
    setThreadsError(errorDescription);
}

HRESULT CapeOpenBaseObject::raise(std::wstring name, std::wstring description, std::wstring scope,
                                  std::wstring interfaceName) {
    SetError(std::move(name), std::move(description), std::move(scope), std::move(interfaceName));
    return capeFailure;
}

STDMETHODIMP CapeOpenBaseObject::get_name(BSTR* name) {
    return getText(errorName, name);
}

// The code stays 0: the texts alone describe the failure.
STDMETHODIMP CapeOpenBaseObject::get_code(LONG* code) {
    return prepareResult(code) ? S_OK : E_POINTER;
}

STDMETHODIMP CapeOpenBaseObject::get_description(BSTR* description) {
    return getText(errorDescription, description);
}

STDMETHODIMP CapeOpenBaseObject::get_scope(BSTR* scope) {
    return getText(errorScope, scope);
}

STDMETHODIMP CapeOpenBaseObject::get_interfaceName(BSTR* interfaceName) {
    return getText(errorInterface, interfaceName);
}

STDMETHODIMP CapeOpenBaseObject::get_operation(BSTR* operation) {
    return getText(L"N/A", operation);
}

STDMETHODIMP CapeOpenBaseObject::get_moreInfo(BSTR* moreInfo) {
    return getText(L"", moreInfo); // would be the address of a web page
}

STDMETHODIMP CapeOpenBaseObject::get_ComponentName(BSTR* name) {
    return getText(componentName, name);
}

STDMETHODIMP CapeOpenBaseObject::put_ComponentName(BSTR name) {
    return putText(name, componentName);
}

STDMETHODIMP CapeOpenBaseObject::get_ComponentDescription(BSTR* description) {
    return getText(componentDescription, description);
}

STDMETHODIMP CapeOpenBaseObject::put_ComponentDescription(BSTR description) {
    return putText(description, componentDescription);
}

} // namespace solvane
