/// The Octave of one automation object, which another process replaces after a failure.
#pragma once

#include "OctaveProcess.h"
#include "TranslatedScripts.h"

#include <memory>
#include <string>
#include <vector>

namespace solvane::engine {

/// Each server process has one session. Used on its main thread.
class OctaveSession {
public:
    OctaveSession() { current_ = this; }
    OctaveSession(const OctaveSession&) = delete;
    OctaveSession& operator=(const OctaveSession&) = delete;

    static OctaveSession& current() { return *current_; }

    /// Launches Octave without waiting for it: it starts while the client is still on its way here.
    void launch();

    /// Waits until Octave takes commands. If it never does, the next command reports it.
    void waitUntilReady();

    /// Runs a command and returns what it printed. A command that changes the path or the current folder need
    /// not double the apostrophes in the folder's name. DISP_E_EXCEPTION if the command raised an error, or
    /// if there is no Octave, with what is missing and what to do; the next command looks for Octave again.
    /// If Octave ends during a command, the command fails; after that, or when it is unknown what a command
    /// did, the next command gets a fresh Octave with the same path entries and current folder. While the
    /// client asks for a stop, every command fails.
    HRESULT execute(const std::wstring& command, std::wstring& output, std::wstring& error);

    /// Ends Octave; a later command gets a fresh one.
    void end() { process_.reset(); }

private:
    bool start();
    HRESULT replay(std::wstring& error);
    void remember(const std::wstring& command);
    HRESULT perform(const std::wstring& command, std::wstring& output, std::wstring& error);

    inline static OctaveSession* current_ = nullptr;

    std::unique_ptr<OctaveProcess> process_; // null while none runs
    std::wstring startError_;                // why none runs, until a command has reported it
    // Commands that succeeded, in their order: a fresh Octave gets them again.
    std::vector<std::wstring> pathCommands_;
    std::wstring folderCommand_;
    std::wstring currentFolder_; // that of folderCommand_; empty if unknown
    TranslatedScripts scripts_;
};

} // namespace solvane::engine
