/// A folder that the engine makes for a while.
#pragma once

#include <string>

namespace solvane::engine {

/// Removed with the files in it when this object goes, or when the process ends for its client's sake.
class OwnFolder {
public:
    OwnFolder() = default;
    ~OwnFolder();
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    /// Makes the folder, into which nobody but this user can write. False, with the system's last error,
    /// where it is there already or cannot be made.
    [[nodiscard]] bool create(const std::wstring& path);

    /// Empty where there is none.
    const std::wstring& path() const { return path_; }

    /// Removes those of the whole process, which then must end.
    static void removeAll();

private:
    std::wstring path_;
};

} // namespace solvane::engine
