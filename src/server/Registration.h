/// What the registry says of the module: the class with its CAPE-OPEN categories and description, the type
/// library, and the model file type.
#pragma once

#include <windows.h>

namespace solvane {

// The first failure is returned. Registering is for this user alone where the user's own value "CurrentUser"
// of Software\SolvaneUO is "1"; unregistering always takes the machine's entries.
HRESULT registerServer();
HRESULT unregisterServer();

/// The entries of the unit's class alone.
HRESULT updateUnitRegistry(bool registering);

} // namespace solvane
