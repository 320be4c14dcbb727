#pragma once

#include "cases/FilePath.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace solvane::host {

/// A folder for the files of one test, deleted with it.
class CaseFolder {
public:
    CaseFolder() : path_(std::filesystem::temp_directory_path() / L"SolvaneHostTest\u00e9") {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~CaseFolder() { std::filesystem::remove_all(path_); }
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
    std::filesystem::path path_;
};

} // namespace solvane::host
