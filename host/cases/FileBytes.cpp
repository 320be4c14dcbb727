#include "FilePath.h"

#include <array>
#include <fstream>

namespace solvane::host {

namespace {

std::string whyUnreadable(const std::filesystem::path& path) {
    std::error_code fault;
    if (!std::filesystem::exists(path, fault))
        return "does not exist";
    if (std::filesystem::is_directory(path, fault))
        return "is a folder";
    return "cannot be opened: check its access rights, and whether another program has it open";
}

std::string whyUnwritable(const std::filesystem::path& path) {
    const std::filesystem::path folder = path.parent_path();
    std::error_code fault;
    if (!folder.empty() && !std::filesystem::is_directory(folder, fault))
        return "there is no folder " + pathText(folder);
    if (std::filesystem::is_directory(path, fault))
        return "it is a folder";
    return "check the access rights and free space of its folder, and whether another program has it open";
}

/// A path for the file until it is complete: no longer than the path itself, which may have the longest
/// length that the system accepts, and never that of an existing file.
std::filesystem::path unusedPathBeside(const std::filesystem::path& path) {
    std::wstring beside = path.wstring();
    std::error_code fault;
    for (const wchar_t last : std::wstring_view(L"~_0123456789")) {
        if (!beside.empty())
            beside.back() = last;
        if (!std::filesystem::exists(beside, fault))
            return beside;
    }
    return {};
}

} // namespace

bool readFile(const std::filesystem::path& path, std::string& bytes, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "the file " + pathText(path) + " " + whyUnreadable(path);
        return false;
    }
    // In pieces: a stream iterator throws if reading fails.
    bytes.clear();
    std::array<char, 0x10000> piece;
    while (file.read(piece.data(), piece.size()) || file.gcount() > 0)
        bytes.append(piece.data(), static_cast<std::size_t>(file.gcount()));
    if (file.bad())
        error = "the file " + pathText(path) + " cannot be read";
    return !file.bad();
}

bool writeFile(const std::filesystem::path& path, std::string_view bytes, std::string& error) {
    const std::filesystem::path part = unusedPathBeside(path);
    std::ofstream file(part, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code fault;
    if (file)
        std::filesystem::rename(part, path, fault);
    if (file && !fault)
        return true;
    std::filesystem::remove(part, fault);
    error = "the file " + pathText(path) + " cannot be written: " + whyUnwritable(path);
    return false;
}

} // namespace solvane::host
