#pragma once

#include <string>

namespace solvane {

class Unit;

/// The text of a file in the unit's working folder, up to its first NUL, from the ANSI code page. A failure
/// comes back as the text itself, so that it stands where the file's text would.
std::wstring readWorkingFile(const Unit& unit, const std::string& fileName);

} // namespace solvane
