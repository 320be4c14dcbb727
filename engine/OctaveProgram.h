/// Which Octave is run, and how it is started.
#pragma once

#include "com/Handle.h"

#include <string>
#include <utility>
#include <vector>

namespace solvane::engine {

/// An installed Octave. Under Wine it may be a Linux program, which has no process handle here, cannot be
/// waited for, and uses Linux paths.
class OctaveProgram {
public:
    /// The programs to try, the best first. Takes the one in the environment variable SOLVANE_OCTAVE, or else
    /// in the value OctaveProgram of Software\SolvaneUO of the user or of the machine; a path that is set
    /// must exist. If none is set, takes the installed versions, the newest first, and under Wine those of
    /// the Linux system after them. False, with a text, if there is no Octave.
    [[nodiscard]] static bool find(std::vector<OctaveProgram>& programs, std::wstring& error);

    /// As it was set or found.
    const std::wstring& path() const { return path_; }

    /// Starts it in the current folder `folder`, with its standard streams on the null device, so that it
    /// does not disturb those of the process that started the server. `process` stays null for a Linux
    /// program.
    [[nodiscard]] bool start(const std::wstring& engineFolder, const std::wstring& folder, Handle& process,
                             std::wstring& error) const;

private:
    explicit OctaveProgram(std::wstring path) : path_(std::move(path)) {}

    /// A path that begins with a slash is a Linux program's.
    bool isLinux() const { return path_.starts_with(L'/'); }
    std::wstring filePath() const;
    std::wstring commandLine(const std::wstring& engineFolder) const;

    std::wstring path_;
};

} // namespace solvane::engine
