/// One running Octave that takes commands.
#pragma once

#include "EngineListener.h"

#include <string>

namespace solvane::engine {

/// Octave runs as long as this object: its end of the connections then closes, and Octave's side ends the
/// process. Used by one thread.
class OctaveProcess {
public:
    /// Starts Octave without waiting for it.
    HRESULT launch(std::wstring& error);

    /// Waits until Octave takes commands, for a bounded time.
    HRESULT waitUntilReady(std::wstring& error);

    /// Runs a command in Octave's base workspace and takes what it printed. An error in the command is no
    /// failure. False once Octave has ended, however that came.
    bool execute(const std::wstring& command, std::wstring& output);

private:
    EngineListener listener_;
    Handle process_; // null for a Linux program
    Connection commands_;
};

} // namespace solvane::engine
