#include "Folders.h"

#include "com/Handle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace solvane {

namespace {

std::wstring temporaryPath() {
    std::wstring path(1024, L'\0');
    path.resize(GetTempPathW(static_cast<DWORD>(path.size()), path.data()));
    return path;
}

} // namespace

std::string readFile(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file)
        return "?";
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::wstring& path, const std::string& bytes) {
    std::ofstream(std::filesystem::path(path), std::ios::binary) << bytes;
}

std::vector<std::wstring> namesIn(const std::wstring& folder) {
    std::set<std::wstring> names;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing))
        names.insert(entry.path().filename().wstring());
    return {names.begin(), names.end()};
}

void runOnLinux(std::wstring command, const std::wstring& folder, const std::wstring& name,
                bool isThereThen) {
    const std::wstring program = L"\\\\?\\unix\\bin\\" + command.substr(0, command.find(L' '));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               folder.c_str(), &start, &started));
    const Handle process(started.hProcess), thread(started.hThread);
    for (int turn = 0; turn < 500; ++turn) {
        if ((std::ranges::count(namesIn(folder), name) == 1) == isThereThen)
            return;
        Sleep(10);
    }
    ADD_FAILURE() << std::string(command.begin(), command.end());
}

void deleteTree(const std::wstring& folder) {
    for (const std::wstring& name : namesIn(folder)) {
        const std::wstring path = folder + L'\\' + name;
        const DWORD attributes = GetFileAttributesW(path.c_str());
        const bool isFolder =
            attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
        if (isFolder && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
            deleteTree(path);
        } else if (isFolder) {
            RemoveDirectoryW(path.c_str());
        } else {
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(path.c_str());
        }
    }
    RemoveDirectoryW(folder.c_str());
}

TemporaryFolder::TemporaryFolder(const std::wstring& name) : former_(temporaryPath()) {
    static int count = 0;
    path_ = former_ + name + L"-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count) +
            L"\\";
    std::filesystem::create_directory(path_);
    SetEnvironmentVariableW(L"TMP", path_.c_str());
}

TemporaryFolder::~TemporaryFolder() {
    SetEnvironmentVariableW(L"TMP", former_.c_str());
    deleteTree(path_);
}

} // namespace solvane
