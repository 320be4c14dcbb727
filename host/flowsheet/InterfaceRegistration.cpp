#include "InterfaceRegistration.h"

#include "CapeOpen.h"
#include "com/CapeError.h"
#include "com/ComRef.h"
#include "com/Module.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace solvane::host {

namespace {

constexpr WORD majorVersion = 1;
constexpr WORD minorVersion = 1;
constexpr SYSKIND system = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;

/// The resource in this program's file.
std::wstring ownLibrary() {
    return ComModule::current().path() + L"\\2";
}

/// The file of the registered type library; empty where none is registered.
std::wstring registeredLibrary() {
    Bstr path;
    if (FAILED(
            QueryPathOfRegTypeLib(LIBID_CAPEOPEN110, majorVersion, minorVersion, LOCALE_NEUTRAL, path.put())))
        return {};
    // Some systems count the terminator of the text.
    return std::wstring(path.view().substr(0, path.view().find(L'\0')));
}

bool failed(std::string& error, const char* what, HRESULT result) {
    error = std::string(what) + ": " + narrow(FormatHresultText(result), CP_UTF8);
    if (result == E_ACCESSDENIED || result == TYPE_E_REGISTRYACCESS)
        error += "; run this as administrator";
    return false;
}

} // namespace

bool areInterfacesRegistered() {
    ComRef<ITypeLib> library;
    return SUCCEEDED(
        LoadRegTypeLib(LIBID_CAPEOPEN110, majorVersion, minorVersion, LOCALE_NEUTRAL, library.put()));
}

bool registerInterfaces(std::string& report, std::string& error) {
    const std::wstring registered = registeredLibrary();
    if (areInterfacesRegistered() && compareNoCase(registered, ownLibrary()) != 0) {
        report = "The CAPE-OPEN type library is already registered: " + narrow(registered, CP_UTF8);
        return true;
    }
    ComRef<ITypeLib> library;
    HRESULT result = LoadTypeLibEx(ownLibrary().c_str(), REGKIND_NONE, library.put());
    if (SUCCEEDED(result))
        result = RegisterTypeLib(library.get(), Bstr(ownLibrary()).get(), nullptr);
    if (FAILED(result))
        return failed(error, "The CAPE-OPEN type library cannot be registered", result);
    report = "The CAPE-OPEN type library is registered: " + narrow(ownLibrary(), CP_UTF8);
    return true;
}

bool unregisterInterfaces(std::string& report, std::string& error) {
    const std::wstring registered = registeredLibrary();
    if (registered.empty()) {
        report = "No CAPE-OPEN type library is registered";
        return true;
    }
    if (compareNoCase(registered, ownLibrary()) != 0) {
        report = "The registered CAPE-OPEN type library is not this program's and is kept: " +
                 narrow(registered, CP_UTF8);
        return true;
    }
    const HRESULT result =
        UnRegisterTypeLib(LIBID_CAPEOPEN110, majorVersion, minorVersion, LOCALE_NEUTRAL, system);
    if (FAILED(result))
        return failed(error, "The registration of the CAPE-OPEN type library cannot be removed", result);
    report = "The registration of the CAPE-OPEN type library has been removed";
    return true;
}

} // namespace solvane::host
