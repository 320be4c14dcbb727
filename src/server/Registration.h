/// The module's registry entries: the class with its CAPE-OPEN categories and description, the type library,
/// and the model file type.
#pragma once

#include <windows.h>

namespace solvane {

// Each returns the first failure. Registers for this user only if the user's value "CurrentUser" of
// Software\SolvaneUO is "1"; always unregisters the machine's entries.
HRESULT registerServer();
HRESULT unregisterServer();

/// Only the entries of the unit's class.
HRESULT updateUnitRegistry(bool registering);

} // namespace solvane
