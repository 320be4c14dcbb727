/// A late-bound client of the server, as the tests need it. The test program registers the server that was
/// built with it.
#pragma once

#include "LateBound.h"
#include "Program.h"

#include <oaidl.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace solvane::engine {

/// Runs the server with these options to its end, expects success, and gives what it printed.
std::string runServer(const wchar_t* options);

class AutomationClient {
public:
    /// Expects success.
    AutomationClient();

    static HRESULT create(ComRef<IDispatch>& object);

    /// The output of a command. Expects the call to succeed.
    std::wstring execute(std::wstring_view command);
    /// The error that a command raises. Expects the call to fail with it.
    std::wstring failureOf(std::wstring_view command);
    LateBound::Call call(const wchar_t* member, WORD flags, const Variant* argument = nullptr);
    /// Whether the Octave is a Windows program, which has neither Linux's shell nor its signals.
    bool isOnWindows() { return execute(L"disp(ispc())") == L"1\n"; }

    /// Lets go of the server.
    void release() { object_.reset(); }

private:
    ComRef<IDispatch> object_;
};

/// While it lives, servers start another Octave.
class OctaveSetting {
public:
    explicit OctaveSetting(const std::wstring& program) {
        SetEnvironmentVariableW(L"SOLVANE_OCTAVE", program.c_str());
    }
    ~OctaveSetting() { SetEnvironmentVariableW(L"SOLVANE_OCTAVE", nullptr); }
    OctaveSetting(const OctaveSetting&) = delete;
    OctaveSetting& operator=(const OctaveSetting&) = delete;
};

/// A new folder for scripts, removed with all that is in it. Its name has what makes paths hard: blanks,
/// letters outside ASCII, capitals.
class ScriptFolder {
public:
    ScriptFolder();
    ~ScriptFolder();
    ScriptFolder(const ScriptFolder&) = delete;
    ScriptFolder& operator=(const ScriptFolder&) = delete;

    /// As a Windows program writes it, without a backslash at the end.
    const std::wstring& path() const { return path_; }
    /// Writes a file with the given bytes.
    void write(std::wstring_view name, std::string_view content) const;
    std::string read(std::wstring_view name) const;
    /// Dates the folder back. Octave looks into the subfolders of one that has not just changed.
    void makeOld() const;

private:
    std::wstring path_;
};

/// Starts a process of its own that runs the script, VBScript, which gets the folder as its argument.
Program startClient(const ScriptFolder& folder, std::string_view script);

/// Waits some seconds at most for what is to come true. Returns whether it did.
bool waitUntil(const std::function<bool()>& condition);

/// Whether a program of this name runs, started by the given process where one is given.
bool isRunning(std::wstring_view program, DWORD parent = 0);
/// Waits some seconds at most for all of them to end.
bool hasEnded(std::wstring_view program, DWORD parent = 0);

/// The server that this process started last; 0 where there is none.
DWORD serverOfThisProcess();

/// Whether the process, of Linux or Windows, lives and is an Octave.
bool isOctaveRunning(const std::string& processId);

} // namespace solvane::engine
