/// The system's registrar, which runs registry scripts.
#pragma once

#include <windows.h>

#include <span>
#include <string>

namespace solvane {

/// A word that a script has between percent signs, and its replacement, which the script has between
/// apostrophes.
struct RegistrarVariable {
    std::wstring name;
    std::wstring value;
};

enum class Registration { add, remove };

/// Runs the script resource of type "REGISTRY" with that number in the module's file. Returns the first
/// failure.
HRESULT runRegistryScript(const std::wstring& modulePath, UINT resourceId,
                          std::span<const RegistrarVariable> variables, Registration registration);

/// Redirects this process's HKEY_CLASSES_ROOT to HKEY_CURRENT_USER\Software\Classes for its lifetime.
class PerUserClassesRoot {
public:
    PerUserClassesRoot();
    ~PerUserClassesRoot();
    PerUserClassesRoot(const PerUserClassesRoot&) = delete;
    PerUserClassesRoot& operator=(const PerUserClassesRoot&) = delete;

    /// A failure leaves the root as it was.
    HRESULT status() const { return status_; }

private:
    HRESULT status_;
};

} // namespace solvane
