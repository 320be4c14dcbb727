#include "BackupCopy.h"

#include "com/StdioFile.h"
#include "com/Text.h"
#include "persistence/WorkingFileName.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace solvane {

namespace {

/// The path of the copy; empty if a file of the model has that name.
std::string backupOf(const std::string& folder, const std::string& name,
                     const std::vector<std::string>& files) {
    const std::string backup = name + ".$$$";
    const bool isTaken = std::ranges::any_of(
        files, [&](const std::string& file) { return compareNoCase(widen(file), widen(backup)) == 0; });
    return isTaken ? "" : folder + backup;
}

} // namespace

void makeBackupCopy(const std::string& folder, const std::string& name,
                    const std::vector<std::string>& files) {
    const std::string path = folder + name;
    const std::string backup = backupOf(folder, name, files);
    if (backup.empty() || workingFileNameFault(name))
        return;
    // The copy of a read-only file is read-only as well: it could be neither overwritten nor deleted.
    SetFileAttributesA(backup.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (CopyFileA(path.c_str(), backup.c_str(), FALSE))
        SetFileAttributesA(backup.c_str(), FILE_ATTRIBUTE_NORMAL);
}

bool differsFromBackupCopy(const std::string& folder, const std::string& name,
                           const std::vector<std::string>& files) {
    const StdioFile file = openFile(folder + name, "rb");
    const StdioFile backup = openFile(backupOf(folder, name, files), "rb");
    if (!file || !backup)
        return true;
    std::array<char, 2048> fileBlock;
    std::array<char, 2048> backupBlock;
    for (;;) {
        // A difference in size shows in the last block of the shorter file.
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
