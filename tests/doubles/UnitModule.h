#pragma once

#include "com/ComRef.h"
#include "com/Handle.h"

#include <string>

namespace solvane {

/// SolvaneUnitOperation.dll by its entry points, as COM and regsvr32 use them, loaded by its path as a host
/// without a registry would. It is unloaded at the end, so that the next load begins with nothing that units
/// of a process share.
class UnitModule {
public:
    explicit UnitModule(const std::wstring& path = builtPath());

    HMODULE handle() const { return library_.get(); }
    HRESULT canUnloadNow() const { return call("DllCanUnloadNow"); }
    HRESULT registerServer() const { return call("DllRegisterServer"); }
    HRESULT unregisterServer() const { return call("DllUnregisterServer"); }
    HRESULT getClassObject(REFCLSID classId, REFIID iid, void** result) const;

    /// Empty where the module refuses.
    ComRef<IClassFactory> factory(REFCLSID classId) const;
    /// A new object of the caller's apartment. Empty where the class factory refuses.
    template <class Interface = IUnknown>
    ComRef<Interface> create(REFCLSID classId) const {
        ComRef<Interface> object;
        if (const auto made = factory(classId))
            made->CreateInstance(nullptr, __uuidof(Interface), object.putVoid());
        return object;
    }
    ComRef<IUnknown> createUnit() const;

    /// The module that this build tree made.
    static std::wstring builtPath();

private:
    struct LibraryPolicy {
        using Type = HMODULE;
        static Type empty() { return nullptr; }
        static void close(Type library) { FreeLibrary(library); }
    };
    HRESULT call(const char* name) const;
    template <class Function>
    Function* entryPoint(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library_.get(), name)));
    }

    Unique<LibraryPolicy> library_;
};

} // namespace solvane
