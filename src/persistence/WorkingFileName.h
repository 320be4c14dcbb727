#pragma once

#include <string>

namespace solvane {

/// Why a file that comes with a model may not have this name (ANSI); null where it may. A model can be a
/// stranger's: its files lie in the unit's working folder and nowhere else, so a name leads nowhere else: it
/// holds no drive and no stream, is not one that Windows takes for a device or for another name, and takes no
/// place of the unit's own files.
const char* workingFileNameFault(const std::string& name);

/// The same for a file that is to be written to the folder: besides, the name must not be the short form
/// (8.3) of the name of a file that lies there.
const char* workingFileFault(const std::string& folder, const std::string& name);

} // namespace solvane
