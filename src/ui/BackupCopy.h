/// Copies by which a page of the window finds out at its end whether a file of the working folder was
/// changed.
#pragma once

#include <string>

namespace solvane {

/// Copies the file beside itself, to its name with ".$$$" appended, over an older copy.
void makeBackupCopy(const std::string& path);

/// Whether file and copy differ. One that can't be read counts as different.
bool differsFromBackupCopy(const std::string& path);

} // namespace solvane
