#pragma once

#include "com/ComRef.h"
#include "com/Handle.h"

#include <string>

namespace solvane {

/// SolvaneUnitOperation.dll, loaded by its path as a host without a registry would. It is unloaded at the
/// end, so that the next load begins with nothing that units of a process share.
class UnitModule {
public:
    UnitModule() : UnitModule(builtPath()) {}
    explicit UnitModule(const std::wstring& path);

    /// A new unit of the caller's apartment. Empty where the class factory refuses.
    ComRef<IUnknown> createUnit() const;

    /// The module that this build tree made.
    static std::wstring builtPath();

private:
    struct LibraryPolicy {
        using Type = HMODULE;
        static Type empty() { return nullptr; }
        static void close(Type library) { FreeLibrary(library); }
    };
    Unique<LibraryPolicy> library_;
};

} // namespace solvane
