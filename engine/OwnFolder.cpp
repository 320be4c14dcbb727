#include "OwnFolder.h"

#include "com/Handle.h"

#include <sddl.h>

#include <cwchar>
#include <mutex>
#include <vector>

namespace solvane::engine {

namespace {

CriticalSection lock;
std::vector<std::wstring> folders;

/// The owner, the system and administrators have full access, all others none.
constexpr wchar_t ownersOnly[] = L"D:P(A;OICI;FA;;;OW)(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";

// So often the removal is tried again, with so many milliseconds between: an Octave whose connection has
// closed ends itself within a second or two.
constexpr int tries = 100;
constexpr DWORD pauseBetween = 30;

/// False if Windows keeps the folder, as the current one of a process.
bool remove(const std::wstring& folder) {
    WIN32_FIND_DATAW entry;
    FindHandle search(FindFirstFileW((folder + L"\\*").c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &entry))
        DeleteFileW((folder + L'\\' + entry.cFileName).c_str());
    search.reset(); // an open search would keep the folder from being removed
    return RemoveDirectoryW(folder.c_str()) || GetLastError() != ERROR_SHARING_VIOLATION;
}

bool isRunning(DWORD processId) {
    const Handle process(OpenProcess(SYNCHRONIZE, FALSE, processId));
    return process ? WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT
                   : GetLastError() == ERROR_ACCESS_DENIED;
}

} // namespace

bool OwnFolder::create(const std::wstring& path) {
    SECURITY_ATTRIBUTES security{sizeof security, nullptr, FALSE};
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(ownersOnly, SDDL_REVISION_1,
                                                              &security.lpSecurityDescriptor, nullptr))
        return false;
    const bool isMade = CreateDirectoryW(path.c_str(), &security) != FALSE;
    LocalFree(security.lpSecurityDescriptor);
    if (isMade) {
        const std::lock_guard guard(lock);
        folders.push_back(path_ = path);
    }
    return isMade;
}

OwnFolder::~OwnFolder() {
    if (path_.empty())
        return;
    const std::lock_guard guard(lock);
    std::erase(folders, path_);
    for (int i = 0; i < tries && !remove(path_); ++i)
        Sleep(pauseBetween);
}

void OwnFolder::removeAbandoned(const std::wstring& prefix) {
    const std::wstring parent = prefix.substr(0, prefix.rfind(L'\\') + 1);
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW((prefix + L'*').c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &entry)) {
        const std::wstring folder = parent + entry.cFileName;
        wchar_t* end = nullptr;
        const DWORD owner = std::wcstoul(folder.c_str() + prefix.size(), &end, 10);
        // A link may lead to files of somebody else.
        const bool isLink = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        if (owner != 0 && *end == L'-' && !isLink && !isRunning(owner))
            static_cast<void>(remove(folder));
    }
}

void OwnFolder::removeAll() {
    const std::lock_guard guard(lock);
    for (const std::wstring& folder : folders)
        static_cast<void>(remove(folder));
}

} // namespace solvane::engine
