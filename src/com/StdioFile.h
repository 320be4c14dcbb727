/// Owner of a stream of the C library.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace solvane {

using StdioFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Null on failure, with the reason in errno.
inline StdioFile openFile(const std::string& path, const char* mode) {
    return {std::fopen(path.c_str(), mode), std::fclose};
}

/// Whether all that was written has reached the file, with the reason in errno; it is closed either way. Not
/// every C library tells of a full disk when it closes a file.
[[nodiscard]] inline bool closeWritten(StdioFile file) {
    return std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0 && std::fclose(file.release()) == 0;
}

} // namespace solvane
