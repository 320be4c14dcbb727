/// The model as one file, by convention ".svm": a zip with its description, the user's script and the further
/// files, made from and unpacked into the unit's working folder.
#pragma once

#include <string>

namespace solvane {

class Unit;

/// Saves the model to `path` (ANSI). On failure an unfinished file may be left there, for the caller to see
/// to. What could not be loaded again is not saved: a file of zero length, one whose name leads out of the
/// working folder, more than the limits of a model.
[[nodiscard]] bool WriteModelDocument(Unit& unit, const std::string& path, std::string& error);

/// Empties the unit, then loads the model from `path` (ANSI). A failure leaves what was loaded so far, and
/// nothing outside the working folder. Warnings are shown to the user once the model is loaded.
[[nodiscard]] bool ReadModelDocument(Unit& unit, const std::string& path, std::string& error);

} // namespace solvane
