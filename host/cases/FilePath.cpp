#include "FilePath.h"

#include "com/Text.h"
#include "com/Wine.h"

namespace solvane::host {

namespace {

/// Wine shows the root of the Unix file system as this drive.
constexpr wchar_t unixRoot[] = L"Z:";

} // namespace

std::filesystem::path filePath(std::string_view path) {
    std::wstring wide = widen(path, CP_UTF8);
    if (wide.starts_with(L'/') && isWine())
        wide.insert(0, unixRoot);
    return wide;
}

std::string pathText(const std::filesystem::path& path) {
    return narrow(path.wstring(), CP_UTF8);
}

std::string pathFromHere(const std::filesystem::path& path) {
    std::error_code fault;
    const std::filesystem::path here = std::filesystem::current_path(fault);
    return narrow(std::filesystem::absolute(path, fault).lexically_proximate(here).generic_wstring(),
                  CP_UTF8);
}

} // namespace solvane::host
