/// Under Aspen Plus a unit keeps its model in a file of its own beside the flowsheet, named after the unit,
/// and does not rely on the host's persistence. Under any other host these functions do nothing.
#pragma once

#include "unit/model/UnitActivity.h"

namespace solvane {

/// Loads the file, if it exists, when the host first needs the unit, in the caller's activity. Waits for the
/// next need if the host calls from inside another activity, as a save, which goes through the model's lists.
/// Shows a failure to the user and leaves the unit with what was loaded so far.
void LoadPrivateModel(Unit& unit, const ActivityScope& activity);

/// Saves the file if the model was edited. Shows a failure to the user. Keeps a file that could not be loaded
/// under another name, which it shows to the user.
void StorePrivateModel(Unit& unit);

} // namespace solvane
