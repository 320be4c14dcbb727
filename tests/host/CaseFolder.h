#pragma once

#include "cases/FilePath.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace solvane::host {

/// A folder of its own for the files of one test, deleted with it as far as no program holds them open.
class CaseFolder {
public:
    CaseFolder() : path_(std::filesystem::temp_directory_path() / (L"SolvaneHost\u00e9" + uniqueName())) {
        std::filesystem::create_directories(path_);
    }
    ~CaseFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    CaseFolder(const CaseFolder&) = delete;
    CaseFolder& operator=(const CaseFolder&) = delete;

    /// Writes a file and gives its path, UTF-8.
    std::string write(std::string_view name, std::string_view bytes) const {
        const auto file = path_ / filePath(name);
        std::string error;
        EXPECT_TRUE(writeFile(file, bytes, error)) << error;
        return pathText(file);
    }

private:
    static std::wstring uniqueName() {
        static int count = 0;
        return std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count);
    }

    std::filesystem::path path_;
};

} // namespace solvane::host
