#pragma once

#include <string>

namespace solvane {

/// Why a file that comes with a model may not have this name (ANSI); null where it may. A model can be a
/// stranger's: its files lie in the unit's working folder and nowhere else, so a name leads nowhere else: it
/// holds no drive and no stream, and is not one that Windows takes for a device or for another name.
const char* workingFileNameFault(const std::string& name);

} // namespace solvane
