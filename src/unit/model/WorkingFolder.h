/// The unit's private folder in the system's temporary folder, in which Matlab works during a run.
#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

// Scripts that the unit keeps in the folder.
inline constexpr char runScriptName[] = "runUnit.m"; ///< what Matlab runs
inline constexpr char userScriptName[] = "calc.m";   ///< the user's script, which every model has

/// The system's temporary folder, ANSI, with a trailing backslash.
[[nodiscard]] bool findTemporaryFolder(std::string& folder, std::string& error);

/// Owns the folder: the constructor creates it; the destructor or a reset deletes it with its files. Paths
/// are ANSI. While the folder exists, other processes can see that it is in use.
class WorkingFolder {
public:
    /// No folder.
    WorkingFolder() = default;

    /// First deletes the folders that dead processes left in the temporary folder, then creates the unit's
    /// folder there, named after its id. After a failure, with a text, there is no folder.
    WorkingFolder(const std::string& temporaryFolder, const std::string& unitId, std::string& error);

    ~WorkingFolder() { reset(); }
    WorkingFolder(WorkingFolder&& other) noexcept;
    WorkingFolder& operator=(WorkingFolder&& other) noexcept;

    /// Whether there is a folder.
    explicit operator bool() const { return !path_.empty(); }
    /// Ends in a backslash. Empty if there is no folder.
    const std::string& path() const { return path_; }
    std::string pathOf(const std::string& fileName) const { return path_ + fileName; }

    /// Writes the run script and the default calc.m.
    [[nodiscard]] bool placeScripts(std::string& error);

    /// Whether the run script still exists: a disk cleaner may have removed it, and the folder too.
    bool isComplete() const;
    /// Restores the folder and its scripts where they are missing. Keeps an existing calc.m.
    [[nodiscard]] bool restore(std::string& error);

    /// Deletes the files and the folder. A sub-folder stays and keeps the folder until another unit starts.
    void reset();

private:
    bool contains(const char* fileName) const;

    std::string path_;
    FileHandle hold_; ///< shows other processes that the folder is in use
};

} // namespace solvane
