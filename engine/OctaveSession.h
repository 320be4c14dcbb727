/// What one automation object stands for: Octave, whichever process that is at the time.
#pragma once

#include "OctaveProcess.h"
#include "TranslatedScripts.h"

#include <memory>
#include <string>
#include <vector>

namespace solvane::engine {

/// One session a server process. Used on its main thread.
class OctaveSession {
public:
    OctaveSession() { current_ = this; }
    OctaveSession(const OctaveSession&) = delete;
    OctaveSession& operator=(const OctaveSession&) = delete;

    static OctaveSession& current() { return *current_; }

    /// Launches Octave without waiting for it: it starts while the client is still on its way here.
    void launch();

    /// Waits until Octave takes commands. Where it does not come to that, the next command says so.
    void waitUntilReady();

    /// Runs a command and takes what it printed. Apostrophes in the name of a folder that goes onto the path
    /// or becomes the current one may be single. DISP_E_EXCEPTION where the command raised an error, and
    /// where there is no Octave, with what is missing and what to do; the next command looks for it again.
    /// Where Octave ends meanwhile, the command fails too; the next one gets a fresh Octave, with the former
    /// one's path entries and current folder; so it does where it is unknown what the command did.
    HRESULT execute(const std::wstring& command, std::wstring& output, std::wstring& error);

    /// Ends Octave; a later command gets a fresh one.
    void end() { process_.reset(); }

private:
    bool start();
    HRESULT replay(std::wstring& error);
    void remember(const std::wstring& command);
    HRESULT perform(const std::wstring& command, std::wstring& output, std::wstring& error);

    inline static OctaveSession* current_ = nullptr;

    std::unique_ptr<OctaveProcess> process_; // null where none runs
    std::wstring startError_;                // why none does, until a command has said so
    // Commands that succeeded, as they came: a fresh Octave gets them again.
    std::vector<std::wstring> pathCommands_;
    std::wstring folderCommand_;
    std::wstring currentFolder_; // that of folderCommand_; empty where it is not clear
    TranslatedScripts scripts_;
};

} // namespace solvane::engine
