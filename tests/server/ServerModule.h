#pragma once

#include "UnitModule.h"
#include "com/ComRef.h"

#include <unknwn.h>

#include <vector>

namespace solvane {

/// The unit's DLL by its four entry points, as COM and regsvr32 use them. Unloaded at the end.
class ServerModule {
public:
    explicit ServerModule(const std::wstring& path = UnitModule::builtPath());
    ~ServerModule() { FreeLibrary(library_); }
    ServerModule(const ServerModule&) = delete;
    ServerModule& operator=(const ServerModule&) = delete;

    HMODULE handle() const { return library_; }
    HRESULT canUnloadNow() const { return call("DllCanUnloadNow"); }
    HRESULT registerServer() const { return call("DllRegisterServer"); }
    HRESULT unregisterServer() const { return call("DllUnregisterServer"); }
    HRESULT getClassObject(REFCLSID classId, REFIID iid, void** result) const;

    /// Empty where the module refuses.
    ComRef<IClassFactory> factory(REFCLSID classId) const;
    template <class Interface = IUnknown>
    ComRef<Interface> create(REFCLSID classId) const {
        ComRef<Interface> object;
        if (const auto made = factory(classId))
            made->CreateInstance(nullptr, __uuidof(Interface), object.putVoid());
        return object;
    }

private:
    HRESULT call(const char* name) const;

    HMODULE library_;
};

/// The classes of the object map, with their names.
struct NamedClass {
    const char* name;
    CLSID id;
};
const std::vector<NamedClass>& allClasses();

} // namespace solvane
