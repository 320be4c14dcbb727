#pragma once

#include <windows.h>

namespace solvane {

class Unit;

/// Shows the unit's window until the user closes it. Returns S_OK if the model was changed, else S_FALSE.
HRESULT editUnit(Unit& unit);

} // namespace solvane
