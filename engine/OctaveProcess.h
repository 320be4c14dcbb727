/// One running Octave that takes commands.
#pragma once

#include "EngineListener.h"
#include "OctaveProgram.h"
#include "OwnFolder.h"

#include <string>

namespace solvane::engine {

/// The error of a command that its client stopped.
inline constexpr wchar_t stopped[] = L"The command was stopped";

/// Octave runs as long as this object exists: its destructor closes the connections, whereupon Octave's side
/// ends the process. Used by one thread.
class OctaveProcess {
public:
    OctaveProcess() = default;
    ~OctaveProcess();
    OctaveProcess(const OctaveProcess&) = delete;
    OctaveProcess& operator=(const OctaveProcess&) = delete;

    /// Starts Octave without waiting for it.
    [[nodiscard]] bool launch(std::wstring& error);

    /// Waits until Octave takes commands, for a bounded time. In the place of an Octave that ends instead it
    /// starts the next of those that were found.
    [[nodiscard]] bool waitUntilReady(std::wstring& error);

    /// Runs a command in Octave's base workspace and returns what it printed. DISP_E_EXCEPTION, with Octave's
    /// text, if the command raised an error; ERROR_PROCESS_ABORTED once Octave has ended for whatever reason,
    /// such as a stop request of the client.
    HRESULT execute(const std::wstring& command, std::wstring& output, std::wstring& error);

    /// For any thread of a process that ends without destructors: ends Octave and removes its folder.
    static void abandon();

    /// The program that was started last.
    const OctaveProgram& program() const { return programs_[started_ - 1]; }

    /// False once it is unknown what a command did: another Octave must replace this one.
    bool isFit() const { return isFit_; }

private:
    [[nodiscard]] bool startNext(std::wstring& error);

    std::vector<OctaveProgram> programs_; // the best first
    std::size_t started_ = 0;             // so many of them
    // Octave starts here, so that it does not find files of the client's current folder.
    OwnFolder folder_;
    EngineListener listener_;
    Handle process_; // null for a Linux program
    Connection commands_;
    bool isFit_ = true;
};

} // namespace solvane::engine
