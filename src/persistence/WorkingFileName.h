#pragma once

#include "com/StdioFile.h"

#include <string>

namespace solvane {

/// The reason why a model's file may not have this name (ANSI); null if it may. A model may come from a
/// stranger, so its files must be in the unit's working folder: a valid name has no drive and no stream, is
/// not one that Windows takes for a device or for another name, and is not the name of one of the unit's
/// own files.
const char* workingFileNameFault(const std::string& name);

/// Opens a file with such a name in the working folder for writing. Null on failure, with the reason in
/// `fault` if the name is the short form (8.3) of that of another file there.
StdioFile openWorkingFile(const std::string& path, const char*& fault);

} // namespace solvane
