#include "AbandonedFolders.h"

#include <array>
#include <string_view>

namespace solvane {

namespace {

constexpr char runScript[] = "runUnit.m";
// How the run script begins, and the name of a folder.
constexpr std::string_view scriptTitle = "%Solvane Unit Operation Script";
constexpr char folderPattern[] = "{*-*-*-*-*}";

/// Whether the run script is one of ours that no process holds. It is empty where the process ended before it
/// could write it.
bool isScriptAbandoned(const std::string& folder) {
    const FileHandle script(CreateFileA((folder + runScript).c_str(), GENERIC_READ | DELETE, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    std::array<char, scriptTitle.size()> title;
    DWORD count = 0;
    return script && ReadFile(script.get(), title.data(), title.size(), &count, nullptr) &&
           (count == 0 || std::string_view(title.data(), count) == scriptTitle);
}

/// Whether the folder could go: a Matlab that outlives its client for a while may still stand in it.
bool canDeleteFolder(const std::string& folder) {
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return static_cast<bool>(FileHandle(CreateFileA(folder.c_str(), DELETE, shareAll, nullptr, OPEN_EXISTING,
                                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr)));
}

} // namespace

FileHandle holdWorkingFolder(const std::string& folder) {
    return FileHandle(CreateFileA((folder + runScript).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0, nullptr));
}

void deleteAbandonedFolders(const std::string& temporaryFolder) {
    WIN32_FIND_DATAA entry;
    const FindHandle search(FindFirstFileA((temporaryFolder + folderPattern).c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileA(search.get(), &entry)) {
        const std::string folder = temporaryFolder + entry.cFileName + '\\';
        if (isScriptAbandoned(folder) && canDeleteFolder(folder))
            deleteFilesAndFolder(folder);
    }
}

void deleteFilesAndFolder(const std::string& folder) {
    WIN32_FIND_DATAA entry;
    FindHandle search(FindFirstFileA((folder + "*.*").c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileA(search.get(), &entry))
        DeleteFileA((folder + entry.cFileName).c_str());
    search.reset(); // an open search keeps the folder
    RemoveDirectoryA(folder.c_str());
}

} // namespace solvane
