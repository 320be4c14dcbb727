#include "OwnFolder.h"

#include "com/Handle.h"

#include <sddl.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace solvane::engine {

namespace {

CriticalSection lock;
std::vector<std::wstring> folders;

/// The owner, the system and administrators have full access, all others none.
constexpr wchar_t ownersOnly[] = L"D:P(A;OICI;FA;;;OW)(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";

void remove(const std::wstring& folder) {
    WIN32_FIND_DATAW entry;
    FindHandle search(FindFirstFileW((folder + L"\\*").c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &entry))
        DeleteFileW((folder + L'\\' + entry.cFileName).c_str());
    search.reset(); // an open search would keep the folder from being removed
    RemoveDirectoryW(folder.c_str());
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
    remove(path_);
}

void OwnFolder::removeAll() {
    const std::lock_guard guard(lock);
    std::ranges::for_each(folders, remove);
}

} // namespace solvane::engine
