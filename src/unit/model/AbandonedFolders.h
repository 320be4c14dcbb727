#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// Marks a working folder, with a trailing backslash, as one in use for as long as the handle lives: its run
/// script is there from now on, empty at first, and nobody can delete it. The mark goes with the process,
/// however that ends.
FileHandle holdWorkingFolder(const std::string& folder);

/// Deletes the working folders in the temporary folder, with a trailing backslash, whose processes have gone
/// without a Terminate, and those that a Terminate had to leave, with all that is in them. What a link in
/// them leads to stays.
void deleteAbandonedFolders(const std::string& temporaryFolder);

/// Deletes the files of a working folder, with a trailing backslash, and the folder. A sub-folder stays and
/// keeps the folder: it is marked for deleteAbandonedFolders by a file beside it.
void deleteFilesAndFolder(const std::string& folder);

} // namespace solvane
