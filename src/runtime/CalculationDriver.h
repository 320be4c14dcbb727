#pragma once

#include <string>

namespace solvane {

class Unit;

/// One run of the unit's script from start to end, and the flash of the products. It blocks the host's thread
/// for as long as the script runs. False with a text; nothing is raised.
[[nodiscard]] bool runCalculation(Unit& unit, std::wstring& error);

} // namespace solvane
