/// The unit's private folder in the system's temporary folder, in which Matlab works during a run.
#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

// Scripts that the unit keeps in the folder.
inline constexpr char runScriptName[] = "runUnit.m"; ///< what Matlab runs
inline constexpr char userScriptName[] = "calc.m";   ///< the user's script, without which there is no model

/// The system's temporary folder, ANSI, with a trailing backslash.
[[nodiscard]] bool findTemporaryFolder(std::string& folder, std::string& error);

/// Owns the folder: it is made by the constructor and deleted with its files when the object ends or is
/// reset. Paths are ANSI. While the folder exists, other processes can see that it is in use.
class WorkingFolder {
public:
    /// No folder.
    WorkingFolder() = default;

    /// Makes the folder, named after the unit's id, in the temporary folder. Folders that units of dead
    /// processes left there are deleted first. After a failure, with a text, there is no folder.
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

    /// Whether the run script is still there: a disk cleaner may have removed it, and the folder too.
    bool isComplete() const;
    /// Makes the folder and its scripts anew where they are gone. A calc.m that is still there stays.
    [[nodiscard]] bool restore(std::string& error);

    /// Deletes the files and the folder. A sub-folder stays and keeps the folder until another unit starts.
    void reset();

private:
    bool contains(const char* fileName) const;

    std::string path_;
    FileHandle hold_; ///< shows other processes that the folder is in use
};

} // namespace solvane
