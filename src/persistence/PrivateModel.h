/// Under Aspen Plus a unit keeps its model in a file of its own beside the flowsheet, named after the unit,
/// and does not rely on the host's persistence. Under any other host nothing of this happens.
#pragma once

namespace solvane {

class Unit;

/// Loads the file, if there is one, at the first moment that the host needs the unit. A failure is shown to
/// the user and leaves the unit with what was loaded so far.
void LoadPrivateModel(Unit& unit);

/// Saves the file if the model was edited. A failure is shown to the user. A file that could not be loaded is
/// kept under another name, which the user is shown.
void StorePrivateModel(Unit& unit);

} // namespace solvane
