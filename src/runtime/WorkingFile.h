#pragma once

#include <string>

namespace solvane {

class Unit;

/// The text of a file in the unit's working folder, up to its first NUL, from the ANSI code page. On failure
/// the description of the failure takes the place of the file's text.
std::wstring readWorkingFile(const Unit& unit, const std::string& fileName);

} // namespace solvane
