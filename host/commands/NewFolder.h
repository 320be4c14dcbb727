#pragma once

#include "cases/CaseModel.h"

#include <string>
#include <vector>

namespace solvane::host {

/// Makes a folder (UTF-8 path), which must not exist, with these files, whose names are paths below it. False
/// with a text; then there may be a part of them.
[[nodiscard]] bool writeNewFolder(const std::string& folder, const std::vector<ModelFile>& files,
                                  std::string& error);

/// The path of a file in the folder, for messages.
std::string pathIn(const std::string& folder, const char* file);

} // namespace solvane::host
