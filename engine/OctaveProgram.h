/// Which Octave is run, and how it is started.
#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane::engine {

/// An Octave that was found. Under Wine it may be a Linux program, which has no process handle here, cannot
/// be waited for, and knows files by their Linux paths.
class OctaveProgram {
public:
    /// Looks where the path can be set - the environment variable SOLVANE_OCTAVE, then the value
    /// OctaveProgram of Software\SolvaneUO of the user and of the machine - and else where Octave is usually
    /// installed. What is set must be there: nothing else is tried in its place. False, with a text, where
    /// none is found.
    [[nodiscard]] static bool find(OctaveProgram& program, std::wstring& error);

    /// Starts it in the current folder `folder`, with its standard streams on nothing, so that it neither
    /// takes nor disturbs those of the process that made the server. `process` stays null where there is no
    /// handle.
    [[nodiscard]] bool start(const std::wstring& engineFolder, const std::wstring& folder, Handle& process,
                             std::wstring& error) const;

private:
    /// A path that begins with a slash is a Linux program's.
    bool isLinux() const { return path_.starts_with(L'/'); }
    std::wstring filePath() const;
    std::wstring commandLine(const std::wstring& engineFolder) const;

    std::wstring path_;
};

} // namespace solvane::engine
