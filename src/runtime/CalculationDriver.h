#pragma once

#include <string>

namespace solvane {

class Unit;

/// Runs the unit's script from start to end and flashes the products. Blocks the host's thread while the
/// script runs. False with a text; raises no error on the unit.
[[nodiscard]] bool runCalculation(Unit& unit, std::wstring& error);

} // namespace solvane
