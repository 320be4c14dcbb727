/// The model as one file, by convention ".svm": a zip of its description, the user's script and the
/// additional files, packed from and unpacked into the unit's working folder.
#pragma once

#include <string>

namespace solvane {

class Unit;

/// Saves the model to `path` (ANSI). On failure the caller must delete an unfinished file there. Fails for a
/// model that could not be loaded again: with an empty file, a file whose name leads out of the working
/// folder, or more than the limits of a model.
[[nodiscard]] bool WriteModelDocument(Unit& unit, const std::string& path, std::string& error);

/// Empties the unit, then loads the model from `path` (ANSI). A failure leaves what was loaded so far, and
/// nothing outside the working folder. Shows warnings to the user after the load.
[[nodiscard]] bool ReadModelDocument(Unit& unit, const std::string& path, std::string& error);

} // namespace solvane
