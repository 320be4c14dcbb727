/// Owner of a stream of the C library.
#pragma once

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace solvane {

using StdioFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Sets errno if so. Wine's C library also opens files by paths that are too long for all other functions,
/// which then could not read or delete them.
inline bool isTooLong(const std::string& path) {
    if (path.size() < _MAX_PATH)
        return false;
    errno = ENAMETOOLONG;
    return true;
}

/// Null on failure, with the reason in errno.
inline StdioFile openFile(const std::string& path, const char* mode) {
    return {isTooLong(path) ? nullptr : std::fopen(path.c_str(), mode), std::fclose};
}

/// The same for writing a new file; fails with EEXIST for one that exists.
inline StdioFile createFile(const std::string& path) {
    constexpr int flags = _O_WRONLY | _O_BINARY | _O_CREAT | _O_EXCL;
    const int file = isTooLong(path) ? -1 : _open(path.c_str(), flags, _S_IREAD | _S_IWRITE);
    return {file < 0 ? nullptr : _fdopen(file, "wb"), std::fclose};
}

/// Opens a file to be written anew by overwriting what it holds. To empty a file first, as mode "w" does,
/// takes a disk access on some file systems: on ext4 some milliseconds for a file written just before. The
/// file keeps the rest of what it held until `closeOverwritten`. `type` is "t" for text and "b" for bytes.
/// Null on failure, with the reason in errno.
inline StdioFile overwriteFile(const std::string& path, const std::string& type) {
    StdioFile file = openFile(path, ("r+" + type).c_str());
    return file ? std::move(file) : openFile(path, ("w" + type).c_str());
}

/// Closes the file. False, with the reason in errno, if not everything written has reached it: not every C
/// library reports a full disk when it closes a file.
[[nodiscard]] inline bool closeWritten(StdioFile file) {
    return std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0 && std::fclose(file.release()) == 0;
}

/// The same for a file from `overwriteFile`: it ends with what was written last.
[[nodiscard]] inline bool closeOverwritten(StdioFile file) {
    const int handle = _fileno(file.get());
    return std::fflush(file.get()) == 0 && _chsize_s(handle, _telli64(handle)) == 0 &&
           closeWritten(std::move(file));
}

} // namespace solvane
