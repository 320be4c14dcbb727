#pragma once

#include "Folders.h"
#include "cases/FilePath.h"

namespace solvane::host {

class CaseFolder : public TemporaryFolder {
public:
    CaseFolder() : TemporaryFolder(L"SolvaneHost\u00e9") {}

    /// Writes a file and returns its path, UTF-8.
    std::string write(std::string_view name, const std::string& bytes) const {
        const std::filesystem::path file = std::filesystem::path(path()) / filePath(name);
        solvane::writeFile(file, bytes);
        return pathText(file);
    }
};

} // namespace solvane::host
