/// What Octave has read of the folders in which it looks for functions.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::engine {

/// When files and folders were last written.
using FileTimes = std::map<std::filesystem::path, std::filesystem::file_time_type>;

/// Octave lists all folders of its path, and asks for the state of each file in them, whenever it changes its
/// folder, even to the one in which it is: that takes longer than all else of a short run.
class FolderWatch {
public:
    /// Octave has just read its current folder and the folders of `path`.
    void remember(std::string_view path);

    /// Whether Octave would find the same files if it changed to `folder` now: it is there already, and no
    /// folder has changed since. `changed` then are the functions of the folder with files that were written
    /// meanwhile: Octave would read them again.
    [[nodiscard]] bool isUpToDate(const std::filesystem::path& folder, std::string_view path,
                                  std::vector<std::string>& changed);

private:
    void add(const std::filesystem::path& folder);
    bool isOld(std::filesystem::file_time_type written) const;

    std::string path_;
    std::filesystem::path folder_;
    bool hasSubfolders_ = false; ///< of functions, in `folder_`
    std::filesystem::file_time_type read_{};
    FileTimes folders_;
    FileTimes files_; ///< in `folder_`
};

} // namespace solvane::engine
