#include "FilePath.h"

#include "com/Text.h"

#include <windows.h>

#include <fstream>
#include <iterator>

namespace solvane::host {

namespace {

/// Wine shows the root of the Unix file system as this drive.
constexpr wchar_t unixRoot[] = L"Z:";

bool isWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

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

bool readFile(const std::filesystem::path& path, std::string& bytes, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "the file " + pathText(path) + " cannot be opened";
        return false;
    }
    bytes.assign(std::istreambuf_iterator<char>(file), {});
    if (file.bad())
        error = "the file " + pathText(path) + " cannot be read";
    return !file.bad();
}

bool writeFile(const std::filesystem::path& path, std::string_view bytes, std::string& error) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        error = "the file " + pathText(path) + " cannot be written";
    return static_cast<bool>(file);
}

} // namespace solvane::host
