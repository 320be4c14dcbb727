#include "AbandonedFolders.h"

#include "WorkingFolder.h"
#include "com/Text.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace solvane {

namespace {

// How the run script begins, and the name of a folder.
constexpr std::string_view scriptTitle = "%Solvane Unit Operation Script";
constexpr char folderPattern[] = "{*-*-*-*-*}";
/// Behind the name of a folder: a file beside a folder that its unit could not delete, with the title in it.
constexpr std::string_view markSuffix = ".left";

/// What a file that no process holds begins with, up to the length of the title.
std::optional<std::string> beginningOf(const std::string& path) {
    const FileHandle file(
        CreateFileA(path.c_str(), GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    std::array<char, scriptTitle.size()> bytes;
    DWORD count = 0;
    if (!file || !ReadFile(file.get(), bytes.data(), bytes.size(), &count, nullptr))
        return std::nullopt;
    return std::string(bytes.data(), count);
}

/// Whether the run script is one of ours that no process holds. It is empty where the process ended before it
/// could write it.
bool isScriptAbandoned(const std::string& folder) {
    const auto beginning = beginningOf(folder + runScriptName);
    return beginning && (beginning->empty() || *beginning == scriptTitle);
}

/// Whether the folder could go: a Matlab that outlives its client for a while may still stand in it.
bool canDeleteFolder(const std::string& folder) {
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return static_cast<bool>(FileHandle(CreateFileA(folder.c_str(), DELETE, shareAll, nullptr, OPEN_EXISTING,
                                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr)));
}

std::string markOf(const std::string& folder) {
    return folder.substr(0, folder.size() - 1) + std::string(markSuffix);
}

/// The folder itself, once it is empty. One that has to stay is marked for the next start.
void deleteFolderOrMark(const std::string& folder) {
    const std::string mark = markOf(folder);
    if (RemoveDirectoryA(folder.c_str()) || GetFileAttributesA(folder.c_str()) == INVALID_FILE_ATTRIBUTES) {
        DeleteFileA(mark.c_str());
        return;
    }
    const FileHandle file(CreateFileA(mark.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD count = 0;
    WriteFile(file.get(), scriptTitle.data(), scriptTitle.size(), &count, nullptr);
}

/// Of links and junctions, which may lead anywhere, only the link goes.
void deleteContents(const std::wstring& folder) {
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW((folder + L'*').c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &entry)) {
        const std::wstring_view name = entry.cFileName;
        const std::wstring path = folder + entry.cFileName;
        if (name == L"." || name == L"..")
            continue;
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            DeleteFileW(path.c_str());
            continue;
        }
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
            deleteContents(path + L'\\');
        RemoveDirectoryW(path.c_str());
    }
}

void deleteWithSubFolders(const std::string& folder) {
    deleteContents(widen(folder));
    deleteFolderOrMark(folder);
}

/// Calls `body` with the name of each folder, or of each mark, among the working folders' names. A link of
/// such a name is none of ours.
template <class Body>
void forEachName(const std::string& pattern, bool isFolder, Body&& body) {
    WIN32_FIND_DATAA entry;
    const FindHandle search(FindFirstFileA(pattern.c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileA(search.get(), &entry))
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 &&
            isFolder == ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0))
            body(std::string(entry.cFileName));
}

} // namespace

FileHandle holdWorkingFolder(const std::string& folder) {
    return FileHandle(CreateFileA((folder + runScriptName).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0, nullptr));
}

void deleteAbandonedFolders(const std::string& temporaryFolder) {
    forEachName(temporaryFolder + folderPattern, true, [&](const std::string& name) {
        const std::string folder = temporaryFolder + name + '\\';
        if (isScriptAbandoned(folder) && canDeleteFolder(folder))
            deleteWithSubFolders(folder);
    });
    const std::string marks = temporaryFolder + folderPattern + std::string(markSuffix);
    forEachName(marks, false, [&](const std::string& name) {
        const std::string folder = temporaryFolder + name.substr(0, name.size() - markSuffix.size()) + '\\';
        const DWORD attributes = GetFileAttributesA(folder.c_str());
        const bool isLink =
            attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        if (!isLink && beginningOf(temporaryFolder + name) == scriptTitle)
            deleteWithSubFolders(folder);
    });
}

void deleteFilesAndFolder(const std::string& folder) {
    WIN32_FIND_DATAA entry;
    FindHandle search(FindFirstFileA((folder + "*.*").c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileA(search.get(), &entry))
        DeleteFileA((folder + entry.cFileName).c_str());
    search.reset(); // an open search keeps the folder
    deleteFolderOrMark(folder);
}

} // namespace solvane
