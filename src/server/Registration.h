/// What the registry says of the module: the class with its CAPE-OPEN categories and description, the type
/// library, and the model file type.
#pragma once

#include <windows.h>

namespace solvane {

HRESULT registerServer();
HRESULT unregisterServer();

/// The unit's own entries.
HRESULT updateUnitRegistry(bool registering);

} // namespace solvane
