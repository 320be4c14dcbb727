// For FileIdInfo. Wine has it; Windows, whatever its version, has no such pipe.
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0602

#include "WinePipes.h"

#include "WinePaths.h"

#include <cstring>
#include <string>

namespace solvane::engine {

FileHandle openWinePipe(const PipeEnd& end, DWORD access) {
    const std::wstring path =
        windowsPath(L"/proc/" + std::to_wstring(end.process) + L"/fd/" + std::to_wstring(end.descriptor));
    FileHandle pipe(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                OPEN_EXISTING, 0, nullptr));
    FILE_ID_INFO found{};
    const bool isSame = pipe && GetFileInformationByHandleEx(pipe.get(), FileIdInfo, &found, sizeof found) &&
                        std::memcmp(&found.FileId, &end.inode, sizeof end.inode) == 0;
    return isSame ? std::move(pipe) : FileHandle();
}

} // namespace solvane::engine
