#pragma once

#include "com/Handle.h"

#include <string>
#include <vector>

namespace solvane {

/// Gives this process an empty registry for its lifetime: redirects the machine's, the user's and the
/// classes' roots to the test's own keys, so that a registration, and the remains of a failing test, affect
/// nothing else. COM still finds its classes.
class RegistrySandbox {
public:
    RegistrySandbox();
    ~RegistrySandbox();
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

    /// Redirects the classes' root to the sandbox again; a registration for the user resets it to the
    /// system's.
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

/// The contents of a key, in the same form, sorted.
std::vector<std::wstring> contentsOf(HKEY key);

} // namespace solvane
