#pragma once

#include <string>

namespace solvane {

class Unit;

/// Reads the description of a model from the working folder into an emptied unit. Each fault of its content
/// adds a line to the unit's `loadWarnings`, and reading continues; false with a text only for a file that
/// cannot be read as XML, that contains what no model needs, or that names a file which no model may have:
/// such a name does not get into the unit.
///
/// Reads text in the thread's ANSI code page, though the document is UTF-8: characters beyond ASCII do not
/// survive.
[[nodiscard]] bool readUnitDocument(Unit& unit, std::string& error);

} // namespace solvane
