/// A temporary folder of the engine.
#pragma once

#include <string>

namespace solvane::engine {

/// Removed with the files in it by the destructor, or when the process ends because its client has ended.
class OwnFolder {
public:
    OwnFolder() = default;
    ~OwnFolder();
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    /// Makes the folder, into which only this user can write. False, with the system's last error, if it
    /// exists already or cannot be made.
    [[nodiscard]] bool create(const std::wstring& path);

    /// Empty if there is no folder.
    const std::wstring& path() const { return path_; }

    /// Removes the folders named `prefix`, a process id, and a hyphen, if their processes have ended without
    /// doing so, as when they were killed.
    static void removeAbandoned(const std::wstring& prefix);

    /// Removes all such folders of the process, which then must end.
    static void removeAll();

private:
    std::wstring path_;
};

} // namespace solvane::engine
