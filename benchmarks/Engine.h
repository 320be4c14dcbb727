#pragma once

#include "com/ComRef.h"

#include <oaidl.h>

#include <string>

namespace solvane {

/// A client of the engine beside the units, with no unit in between.
class Engine {
public:
    Engine();
    /// False where there is no engine; nothing can be executed then.
    explicit operator bool() const { return static_cast<bool>(application_); }

    /// What the command printed, or "?".
    std::wstring execute(const std::wstring& command) const;

private:
    ComRef<IDispatch> application_;
};

/// The working folder of the one unit whose folders go into `temporary`, with a trailing backslash; empty
/// where there is none.
std::wstring workingFolderIn(const std::wstring& temporary);

/// What a unit does once before its runs.
void addPaths(const Engine& engine, const std::wstring& folder);

/// The commands of a run in a unit's working folder. The gateway opens a block, in which nobody answers: the
/// script must not ask. False where it failed.
bool runBare(const Engine& engine, const std::wstring& folder);

} // namespace solvane
