#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// A file of this build tree's folder of binaries.
std::wstring builtFile(const std::wstring& name);

/// How a program ended, and what it printed to both of its streams.
struct Outcome {
    DWORD exitCode = 0;
    std::string printed;
};

/// A process of its own.
class Program {
public:
    /// Starts a command line. The program is the one that it names, where no file is given.
    explicit Program(std::wstring commandLine, const wchar_t* file = nullptr);

    HANDLE handle() const { return process_.get(); }
    DWORD threadId() const { return threadId_; }

    /// Expects its end within a minute.
    Outcome wait();

private:
    std::wstring log_;
    Handle process_;
    DWORD threadId_ = 0;
};

} // namespace solvane
