#pragma once

#include <string>

namespace solvane {

class Unit;

/// Reads the description of a model from the working folder into an emptied unit. What is wrong with its
/// content goes to the unit's `loadWarnings`, a line each, and the rest is read; false with a text only for a
/// file that can't be read as XML, that holds what a model has no use for, or that names a file which no
/// model may have: such a name does not get into the unit.
///
/// Text is taken as of the thread's ANSI code page, though the document is UTF-8: characters beyond ASCII do
/// not survive.
[[nodiscard]] bool readUnitDocument(Unit& unit, std::string& error);

} // namespace solvane
