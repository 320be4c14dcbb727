/// One running Octave that takes commands.
#pragma once

#include "EngineListener.h"
#include "OwnFolder.h"

#include <string>

namespace solvane::engine {

/// Octave runs as long as this object: its end of the connections then closes, and Octave's side ends the
/// process. Used by one thread.
class OctaveProcess {
public:
    /// Starts Octave without waiting for it.
    [[nodiscard]] bool launch(std::wstring& error);

    /// Waits until Octave takes commands, for a bounded time.
    [[nodiscard]] bool waitUntilReady(std::wstring& error);

    /// Runs a command in Octave's base workspace and takes what it printed. DISP_E_EXCEPTION where the
    /// command raised an error, with Octave's text, and ERROR_PROCESS_ABORTED once Octave has ended, however
    /// that came.
    HRESULT execute(const std::wstring& command, std::wstring& output, std::wstring& error);

    /// False once it is unknown what a command did: another Octave has to take over.
    bool isFit() const { return isFit_; }

private:
    // Where Octave starts: what lies in the client's current folder is not to be found there.
    OwnFolder folder_;
    EngineListener listener_;
    Handle process_; // null for a Linux program
    Connection commands_;
    bool isFit_ = true;
};

} // namespace solvane::engine
