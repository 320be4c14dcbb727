#pragma once

#include <string>

namespace solvane {

/// The reason why a model's file may not have this name (ANSI); null if it may. A model may come from a
/// stranger, so its files must be in the unit's working folder: a valid name has no drive and no stream, is
/// not one that Windows takes for a device or for another name, and is not the name of one of the unit's
/// own files.
const char* workingFileNameFault(const std::string& name);

/// The same for a file that is to be written to the folder: its name must also not be the short form (8.3) of
/// the name of a file there.
const char* workingFileFault(const std::string& folder, const std::string& name);

} // namespace solvane
