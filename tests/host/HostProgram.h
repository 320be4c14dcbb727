/// The built SolvaneHost as a process of its own.
#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane::host {

/// How it ended, and what it printed to both of its streams, UTF-8.
struct Outcome {
    DWORD exitCode = 0;
    std::string printed;
};

class HostProgram {
public:
    /// Starts it with these arguments.
    explicit HostProgram(const std::wstring& arguments);

    DWORD threadId() const { return threadId_; }

    /// Expects its end within a minute.
    Outcome wait();

private:
    std::wstring log_;
    Handle process_;
    DWORD threadId_ = 0;
};

} // namespace solvane::host
