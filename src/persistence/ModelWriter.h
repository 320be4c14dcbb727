#pragma once

#include <string>

namespace solvane {

class Unit;

/// The description of a model: everything except its script and its additional files.
inline constexpr char modelDocument[] = "unit.xml";

/// Writes the description to the working folder. Numbers keep six significant digits.
[[nodiscard]] bool writeUnitDocument(const Unit& unit, std::string& error);

} // namespace solvane
