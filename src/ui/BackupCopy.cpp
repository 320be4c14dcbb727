#include "BackupCopy.h"

#include "com/StdioFile.h"
#include "persistence/WorkingFileName.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace solvane {

namespace {

std::string backupOf(const std::string& path) {
    return path + ".$$$";
}

} // namespace

void makeBackupCopy(const std::string& folder, const std::string& name) {
    if (workingFileNameFault(name))
        return;
    const std::string path = folder + name;
    const std::string backup = backupOf(path);
    // The copy of a read-only file is read-only, and could be neither written over nor deleted.
    SetFileAttributesA(backup.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (CopyFileA(path.c_str(), backup.c_str(), FALSE))
        SetFileAttributesA(backup.c_str(), FILE_ATTRIBUTE_NORMAL);
}

bool differsFromBackupCopy(const std::string& folder, const std::string& name) {
    const std::string path = folder + name;
    const StdioFile file = openFile(path, "rb");
    const StdioFile backup = openFile(backupOf(path), "rb");
    if (!file || !backup)
        return true;
    std::array<char, 2048> fileBlock;
    std::array<char, 2048> backupBlock;
    for (;;) {
        // A difference in size shows in the last block of the shorter one.
        const std::size_t count = std::fread(fileBlock.data(), 1, fileBlock.size(), file.get());
        const std::size_t backupCount = std::fread(backupBlock.data(), 1, backupBlock.size(), backup.get());
        if (count != backupCount ||
            !std::equal(fileBlock.begin(), fileBlock.begin() + count, backupBlock.begin()))
            return true;
        if (count < fileBlock.size())
            return std::ferror(file.get()) != 0 || std::ferror(backup.get()) != 0;
    }
}

} // namespace solvane
