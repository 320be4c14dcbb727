#include "HostCommands.h"

#include "cases/FilePath.h"
#include "com/Handle.h"
#include "studies/StudyTable.h"

#include <algorithm>

namespace solvane::host {

namespace {

/// The files that a path with wildcards means, which the command prompt of Windows leaves to the program.
std::vector<std::filesystem::path> matchingFiles(const std::string& path) {
    const std::filesystem::path pattern = filePath(path);
    if (pattern.filename().wstring().find_first_of(L"*?") == std::wstring::npos)
        return {pattern};
    std::vector<std::filesystem::path> files;
    WIN32_FIND_DATAW found{};
    const Unique<FindHandlePolicy> search(FindFirstFileW(pattern.c_str(), &found));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &found))
        files.push_back(pattern.parent_path() / found.cFileName);
    std::ranges::sort(files);
    return files;
}

} // namespace

ExitCode mergeCommand(const MergeOptions& options) {
    std::vector<std::string> tables;
    std::string error;
    for (const std::string& path : options.partPaths)
        for (const std::filesystem::path& file : matchingFiles(path))
            if (!readFile(file, tables.emplace_back(), error))
                return complain(badUsage, error);
    std::string merged;
    if (!mergeTables(tables, merged, error) || !writeFile(filePath(options.csvPath), merged, error))
        return complain(badUsage, error);
    return ok;
}

} // namespace solvane::host
