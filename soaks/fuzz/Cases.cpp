// Any text in the place of a case file: an error with a text, or a case.
#include "Check.h"
#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "cases/ParameterRules.h"

#include <strings.h>
#include <sys/mman.h>
#include <unistd.h>

namespace solvane::host {

// This system's own names, in the place of Windows'.

std::filesystem::path filePath(std::string_view path) {
    return path;
}

std::string pathText(const std::filesystem::path& path) {
    return path.string();
}

bool isSameName(std::string_view left, std::string_view right) {
    return strcasecmp(std::string(left).c_str(), std::string(right).c_str()) == 0;
}

} // namespace solvane::host

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int file = memfd_create("case", 0);
    check(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size));
    solvane::host::Case result;
    std::string error;
    check(solvane::host::readCase("/proc/self/fd/" + std::to_string(file), result, error) == error.empty());
    close(file);
    return 0;
}
