/// Copies by which a page of the window finds out at its end whether a file of the working folder was
/// changed.
#pragma once

#include <string>

namespace solvane {

/// Copies the folder's file of that name beside itself, to its name with ".$$$" appended, over an older copy.
/// A name that leads out of the folder is left alone: it may be a stranger's.
void makeBackupCopy(const std::string& folder, const std::string& name);

/// Whether file and copy differ. One that can't be read counts as different.
bool differsFromBackupCopy(const std::string& folder, const std::string& name);

} // namespace solvane
