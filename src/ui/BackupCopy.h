/// Copies by which a page of the window finds out at its end whether a file of the working folder was
/// changed.
#pragma once

#include <string>
#include <vector>

namespace solvane {

/// Copies the folder's file of that name beside itself, to its name with ".$$$" appended, over an older copy.
/// Makes none of a file whose name leads out of the folder, which may be a stranger's, and none over one of
/// `files`, the model's.
void makeBackupCopy(const std::string& folder, const std::string& name,
                    const std::vector<std::string>& files);

/// Whether file and copy differ. One that can't be read, or has no copy, counts as different.
bool differsFromBackupCopy(const std::string& folder, const std::string& name,
                           const std::vector<std::string>& files);

} // namespace solvane
