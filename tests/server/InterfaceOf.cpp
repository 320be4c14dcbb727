// "Solvane.InterfaceOf", for scripts: a script can call an object through its IDispatch only, a typed caller
// through each of its dual interfaces. Of(object, "{interface id}") gives the object by that interface.

#include "com/ComRef.h"
#include "com/Registry.h"
#include "com/Variant.h"

#include <oaidl.h>

#include <string>

namespace solvane {

namespace {

constexpr CLSID interfaceOfClass{
    0x5C7A1E2D, 0x93B4, 0x4D0E, {0x8A, 0x61, 0x2F, 0x0D, 0x7B, 0x9C, 0x41, 0xE3}};
constexpr wchar_t classKey[] = L"Software\\Classes\\CLSID\\{5C7A1E2D-93B4-4D0E-8A61-2F0D7B9C41E3}";
constexpr wchar_t programKey[] = L"Software\\Classes\\Solvane.InterfaceOf";

/// Argument `index`, from the last, whichever way the script passed it.
Variant argument(const DISPPARAMS& parameters, UINT index) {
    Variant direct;
    VariantCopyInd(direct.put(), &parameters.rgvarg[index]);
    return direct;
}

/// The class object and its only object, which lives as long as the module.
class InterfaceOf final : public IDispatch, public IClassFactory {
public:
    virtual ~InterfaceOf() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        *result = iid == IID_IClassFactory ? static_cast<IClassFactory*>(this)
                  : iid == IID_IDispatch || iid == IID_IUnknown
                      ? static_cast<void*>(static_cast<IDispatch*>(this))
                      : nullptr;
        return *result ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
        return outer ? CLASS_E_NOAGGREGATION : QueryInterface(iid, result);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        *ids = 1;
        return _wcsicmp(names[0], L"Of") == 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (parameters->cArgs != 2 || !result)
            return DISP_E_BADPARAMCOUNT;
        const Variant object = argument(*parameters, 1);
        const Variant id = argument(*parameters, 0);
        IID iid;
        if (object.type() != VT_DISPATCH || !object.get().pdispVal || id.type() != VT_BSTR ||
            FAILED(IIDFromString(id.get().bstrVal, &iid)))
            return DISP_E_TYPEMISMATCH;
        result->vt = VT_DISPATCH; // each of the interfaces is a dual one
        result->pdispVal = nullptr;
        return object.get().pdispVal->QueryInterface(iid, reinterpret_cast<void**>(&result->pdispVal));
    }
};

InterfaceOf theObject;
HINSTANCE module;

} // namespace

} // namespace solvane

using namespace solvane;

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD, LPVOID) {
    module = instance;
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** result) {
    return classId == interfaceOfClass ? theObject.QueryInterface(iid, result) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return S_FALSE;
}

STDAPI DllRegisterServer() {
    std::wstring path(1024, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    const std::wstring server = std::wstring(classKey) + L"\\InprocServer32";
    writeRegistryString(HKEY_LOCAL_MACHINE, server, L"", path);
    writeRegistryString(HKEY_LOCAL_MACHINE, server, L"ThreadingModel", L"Both");
    const LSTATUS written =
        writeRegistryString(HKEY_LOCAL_MACHINE, std::wstring(programKey) + L"\\CLSID", L"",
                            std::wstring(classKey).substr(std::wstring(classKey).find(L'{')));
    return HRESULT_FROM_WIN32(static_cast<DWORD>(written));
}

STDAPI DllUnregisterServer() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, classKey);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, programKey);
    return S_OK;
}
