/// Files and folders as the tests look at them.
#pragma once

#include <string>
#include <vector>

namespace solvane {

/// The file's bytes; "?" where it can't be read.
std::string readFile(const std::wstring& path);
void writeFile(const std::wstring& path, const std::string& bytes);

/// The names in a folder, sorted.
std::vector<std::wstring> namesIn(const std::wstring& folder);

/// Deletes a folder as far as it goes; of links only the link. The library's remove_all never ends where
/// another process, such as an engine that ends, removes an entry meanwhile.
void deleteTree(const std::wstring& folder);

/// Has the Linux system below Wine carry out a command of the form "rm name" in the folder, and waits until
/// `name` is there, or no longer: the program's own end cannot be waited for.
void runOnLinux(std::wstring command, const std::wstring& folder, const std::wstring& name, bool isThereThen);

/// An empty folder of the test's own. For its lifetime it is the process's temporary folder.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::wstring& name = L"solvane");
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// With a trailing backslash.
    const std::wstring& path() const { return path_; }

private:
    std::wstring path_;
    std::wstring former_;
};

} // namespace solvane
