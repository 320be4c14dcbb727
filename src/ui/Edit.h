#pragma once

#include <windows.h>

namespace solvane {

class Unit;

/// Lets the user configure the unit in its window. S_OK where something was changed, S_FALSE where not.
HRESULT editUnit(Unit& unit);

} // namespace solvane
