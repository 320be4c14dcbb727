#include "AbandonedFolders.h"

#include "WorkingFolder.h"
#include "com/Text.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace solvane {

namespace {

// The beginning of the run script, and of a folder's name.
constexpr std::string_view scriptTitle = "%Solvane Unit Operation Script";
constexpr char folderPattern[] = "{*-*-*-*-*}";
/// Appended to a folder's name: a file beside a folder that its unit could not delete; contains the title.
constexpr std::string_view markSuffix = ".left";

/// The beginning of a file that no process holds, up to the length of the title.
std::optional<std::string> beginningOf(const std::string& path) {
    const FileHandle file(
        CreateFileA(path.c_str(), GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    std::array<char, scriptTitle.size()> bytes;
    DWORD count = 0;
    if (!file || !ReadFile(file.get(), bytes.data(), bytes.size(), &count, nullptr))
        return std::nullopt;
    return std::string(bytes.data(), count);
}

/// Whether the run script is ours and no process holds it. It is empty if the process ended before writing
/// it.
bool isScriptAbandoned(const std::string& folder) {
    const auto beginning = beginningOf(folder + runScriptName);
    return beginning && (beginning->empty() || *beginning == scriptTitle);
}

/// Whether the folder can be deleted: a Matlab that briefly outlives its client may still use it.
bool canDeleteFolder(const std::string& folder) {
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return static_cast<bool>(FileHandle(CreateFileA(folder.c_str(), DELETE, shareAll, nullptr, OPEN_EXISTING,
                                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr)));
}

std::string markOf(const std::string& folder) {
    return folder.substr(0, folder.size() - 1) + std::string(markSuffix);
}

/// Deletes the folder once it is empty. Marks a folder that has to stay for the next start.
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

/// Deletes only the link of a link or junction, which may lead anywhere.
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

/// Calls `body` with the name of each folder, or of each mark, that is named like a working folder. A link
/// with such a name is not ours.
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
    search.reset(); // an open search prevents the deletion
    deleteFolderOrMark(folder);
}

} // namespace solvane
