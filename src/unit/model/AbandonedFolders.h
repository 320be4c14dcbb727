#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// Marks a working folder, with a trailing backslash, as in use while the handle lives: creates its run
/// script, empty at first, which nobody can delete meanwhile. The mark ends with the process, however that
/// ends.
FileHandle holdWorkingFolder(const std::string& folder);

/// Deletes the working folders in the temporary folder (with a trailing backslash) whose processes ended
/// without a Terminate, and those that a Terminate had to leave, with their contents. The targets of links in
/// them stay.
void deleteAbandonedFolders(const std::string& temporaryFolder);

/// Deletes the files of a working folder, with a trailing backslash, and the folder. A sub-folder stays and
/// keeps the folder: it is marked for deleteAbandonedFolders by a file beside it.
void deleteFilesAndFolder(const std::string& folder);

} // namespace solvane
