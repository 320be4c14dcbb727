#include "NewFolder.h"

#include "cases/FilePath.h"

namespace solvane::host {

bool writeNewFolder(const std::string& folder, const std::vector<ModelFile>& files, std::string& error) {
    const std::filesystem::path root = filePath(folder);
    std::error_code fault;
    if (std::filesystem::exists(root, fault)) {
        error = pathText(root) + " exists; choose another folder";
        return false;
    }
    if (!std::filesystem::create_directory(root, fault)) {
        error = "the folder " + pathText(root) + " cannot be made: check the folder in which it is to be";
        return false;
    }
    for (const ModelFile& file : files) {
        const std::filesystem::path path = root / filePath(file.name);
        std::filesystem::create_directory(path.parent_path(), fault); // a failure shows in the next line
        if (!writeFile(path, file.bytes, error))
            return false;
    }
    return true;
}

std::string pathIn(const std::string& folder, const char* file) {
    return pathText((filePath(folder) / file).make_preferred());
}

} // namespace solvane::host
