/// Owner of a stream of the C library.
#pragma once

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace solvane {

using StdioFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Null on failure, with the reason in errno. Wine's C library also opens files by paths that are too long
/// for all other functions, which then could not read or delete them.
inline StdioFile openFile(const std::string& path, const char* mode) {
    if (path.size() >= _MAX_PATH) {
        errno = ENAMETOOLONG;
        return {nullptr, std::fclose};
    }
    return {std::fopen(path.c_str(), mode), std::fclose};
}

/// Closes the file. False, with the reason in errno, if not everything written has reached it: not every C
/// library reports a full disk when it closes a file.
[[nodiscard]] inline bool closeWritten(StdioFile file) {
    return std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0 && std::fclose(file.release()) == 0;
}

} // namespace solvane
