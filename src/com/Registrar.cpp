#include "Registrar.h"

#include "Apartment.h"
#include "ComRef.h"
#include "Handle.h"

namespace solvane {

// Not in an unnamed namespace: there the compiler sees that nothing implements it, and drops the calls.
struct IRegistrar : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE AddReplacement(LPCOLESTR key, LPCOLESTR item) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClearReplacements() = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegisterSz(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregisterSz(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileRegister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileUnregister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringRegister(LPCOLESTR data) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringUnregister(LPCOLESTR data) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegister(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregister(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
};

namespace {

// The system's own class and interface: {44EC053A-...} makes an IRegistrar.
constexpr CLSID registrarClass{0x44EC053A, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};
constexpr IID registrarInterface{
    0x44EC053B, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};

/// The script has its variables between apostrophes.
std::wstring withApostrophesDoubled(std::wstring_view text) {
    std::wstring doubled;
    for (const wchar_t c : text)
        doubled.append(c == L'\'' ? 2 : 1, c);
    return doubled;
}

} // namespace

HRESULT runRegistryScript(const std::wstring& modulePath, UINT resourceId,
                          std::span<const RegistrarVariable> variables, Registration registration) {
    const Apartment apartment; // the caller may have none yet
    ComRef<IRegistrar> registrar;
    HRESULT result = CoCreateInstance(registrarClass, nullptr, CLSCTX_INPROC_SERVER, registrarInterface,
                                      registrar.putVoid());
    for (const RegistrarVariable& variable : variables)
        if (SUCCEEDED(result))
            result = registrar->AddReplacement(variable.name.c_str(),
                                               withApostrophesDoubled(variable.value).c_str());
    if (FAILED(result))
        return result;
    return registration == Registration::add
               ? registrar->ResourceRegister(modulePath.c_str(), resourceId, L"REGISTRY")
               : registrar->ResourceUnregister(modulePath.c_str(), resourceId, L"REGISTRY");
}

PerUserClassesRoot::PerUserClassesRoot() {
    RegistryKey classes;
    LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS,
                                     nullptr, classes.put(), nullptr);
    if (status == ERROR_SUCCESS)
        status = RegOverridePredefKey(HKEY_CLASSES_ROOT, classes.get());
    status_ = HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

PerUserClassesRoot::~PerUserClassesRoot() {
    RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
}

} // namespace solvane
