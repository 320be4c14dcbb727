/// The system's registrar, which runs registry scripts.
#pragma once

#include <windows.h>

#include <span>
#include <string>

namespace solvane {

/// A word of a script between percent signs, and what stands for it, which the script has between
/// apostrophes.
struct RegistrarVariable {
    std::wstring name;
    std::wstring value;
};

enum class Registration { add, remove };

/// Runs the script resource of type "REGISTRY" with that number in the module's file. The first failure is
/// returned.
HRESULT runRegistryScript(const std::wstring& modulePath, UINT resourceId,
                          std::span<const RegistrarVariable> variables, Registration registration);

/// For its lifetime this process's HKEY_CLASSES_ROOT is the user's own HKEY_CURRENT_USER\Software\Classes.
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
