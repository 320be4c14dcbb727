/// Copies by which a page finds out, when the window closes, whether a file of the working folder changed.
#pragma once

#include <string>
#include <vector>

namespace solvane {

/// Copies the file to its name with ".$$$" appended, over an older copy. Makes no copy of a file whose name
/// leads out of the folder, and none that would overwrite one of `files`, the model's own.
void makeBackupCopy(const std::string& folder, const std::string& name,
                    const std::vector<std::string>& files);

/// Whether file and copy differ. A file that cannot be read or has no copy counts as different.
bool differsFromBackupCopy(const std::string& folder, const std::string& name,
                           const std::vector<std::string>& files);

} // namespace solvane
