#include "Dispatch.h"

#include "CapeOpen.h"
#include "Module.h"
#include "Variant.h"

#include <algorithm>
#include <mutex>

namespace solvane {

namespace {

/// The resource number of the CAPE-OPEN type library in this module.
constexpr wchar_t builtInTypeLibrary[] = L"\\2";

/// Fills the record from the thread's error object where the type information does not: it may query for
/// ISupportErrorInfo first, which the objects do not have.
void fillException(EXCEPINFO& exception) {
    ComRef<IErrorInfo> error;
    if (exception.bstrDescription || GetErrorInfo(0, error.put()) != S_OK)
        return;
    error->GetDescription(&exception.bstrDescription);
    if (!exception.bstrSource)
        error->GetSource(&exception.bstrSource);
}

} // namespace

HRESULT loadCapeOpenTypeLibrary(ComRef<ITypeLib>& library) {
    const HRESULT registered = LoadRegTypeLib(LIBID_CAPEOPEN110, 1, 1, LOCALE_NEUTRAL, library.put());
    if (SUCCEEDED(registered))
        return registered;
    const std::wstring path = ComModule::current().path() + builtInTypeLibrary;
    return LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put());
}

HRESULT DispatchTypeInfo::load() {
    const std::lock_guard guard(lock_);
    if (typeInfo_)
        return S_OK;
    ComRef<ITypeLib> library;
    HRESULT result = loadCapeOpenTypeLibrary(library);
    if (FAILED(result))
        return result;
    ComRef<ITypeInfo> typeInfo;
    result = library->GetTypeInfoOfGuid(iid_, typeInfo.put());
    if (FAILED(result))
        return result;

    TYPEATTR* attributes = nullptr;
    result = typeInfo->GetTypeAttr(&attributes);
    if (FAILED(result))
        return result;
    const UINT functions = attributes->cFuncs;
    typeInfo->ReleaseTypeAttr(attributes);
    std::vector<Name> names;
    for (UINT i = 0; i < functions; ++i) {
        FUNCDESC* function = nullptr;
        if (FAILED(typeInfo->GetFuncDesc(i, &function)))
            continue;
        Bstr name;
        if (SUCCEEDED(typeInfo->GetDocumentation(function->memid, name.put(), nullptr, nullptr, nullptr)))
            names.push_back({std::wstring(name.view()), function->memid});
        typeInfo->ReleaseFuncDesc(function);
    }
    names_ = std::move(names);
    typeInfo_ = std::move(typeInfo);
    return S_OK;
}

HRESULT DispatchTypeInfo::getTypeInfo(UINT index, ITypeInfo** result) {
    if (!prepareResult(result))
        return E_POINTER;
    if (index != 0)
        return DISP_E_BADINDEX;
    const HRESULT loaded = load();
    if (FAILED(loaded))
        return loaded;
    *result = ComRef(typeInfo_).release();
    return S_OK;
}

HRESULT DispatchTypeInfo::getIdsOfNames(LPOLESTR* names, UINT count, DISPID* ids) {
    if (!names || !ids || std::find(names, names + count, nullptr) != names + count)
        return E_POINTER;
    const HRESULT loaded = load();
    if (FAILED(loaded))
        return loaded;
    if (count == 1) {
        const std::wstring_view wanted(names[0]);
        for (auto name = names_.rbegin(); name != names_.rend(); ++name)
            if (name->text.size() == wanted.size() && name->text == wanted) {
                ids[0] = name->id;
                return S_OK;
            }
    }
    return typeInfo_->GetIDsOfNames(names, count, ids);
}

HRESULT DispatchTypeInfo::invoke(void* object, DISPID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                 EXCEPINFO* exception, UINT* argumentError) {
    const HRESULT loaded = load();
    if (FAILED(loaded))
        return loaded;
    SetErrorInfo(0, nullptr); // a text from an earlier call does not describe this one's failure
    const HRESULT invoked =
        typeInfo_->Invoke(object, id, flags, parameters, result, exception, argumentError);
    if (invoked == DISP_E_EXCEPTION && exception)
        fillException(*exception);
    return invoked;
}

} // namespace solvane
