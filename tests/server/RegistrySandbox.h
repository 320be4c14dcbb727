#pragma once

#include "com/Handle.h"

#include <string>
#include <vector>

namespace solvane {

/// For its lifetime this process sees an empty registry: the machine's, the user's and the classes' roots are
/// keys of the test's own, so that a registration, and what a failing test leaves of it, touches nothing
/// else. COM finds its classes all the same.
class RegistrySandbox {
public:
    RegistrySandbox();
    ~RegistrySandbox();
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

    /// Puts the classes' root back to the sandbox's; a registration for the user leaves it at the system's.
    void coverClassesRoot() const { RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_.get()); }

    /// The system's own key HKEY_LOCAL_MACHINE\Software\Classes, outside the sandbox.
    HKEY systemClasses() const { return systemClasses_.get(); }

    /// The contents of Software\Classes: "key\sub", "key = default value" and "key [name] = value". Keys are
    /// in lower case, since the system spells some as it likes.
    std::vector<std::wstring> machineClasses() const;
    std::vector<std::wstring> userClasses() const;

private:
    RegistryKey systemClasses_;
    RegistryKey root_;
    RegistryKey machine_;
    RegistryKey user_;
    RegistryKey classes_;
};

/// What stands below a key, in the same form, sorted.
std::vector<std::wstring> contentsOf(HKEY key);

} // namespace solvane
