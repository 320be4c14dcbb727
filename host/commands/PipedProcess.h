#pragma once

#include "com/Handle.h"

#include <filesystem>
#include <string>

namespace solvane::host {

/// A process whose standard input and output are pipes to this one. It shares the standard error.
class PipedProcess {
public:
    PipedProcess() = default;
    PipedProcess(const PipedProcess&) = delete;
    PipedProcess& operator=(const PipedProcess&) = delete;

    /// One thread at a time may start a process, since handles are inherited.
    [[nodiscard]] bool start(const std::filesystem::path& program, std::wstring commandLine,
                             std::string& error);

    /// False if the process has ended.
    [[nodiscard]] bool write(const std::string& text);
    void closeInput() { input_.reset(); }

    /// Adds what the process prints next; false at the end of its output.
    [[nodiscard]] bool read(std::string& text);

    /// False if the process has not ended in this time.
    bool waitForEnd(DWORD milliseconds) const;
    void terminate() { TerminateProcess(process_.get(), 1); }

    explicit operator bool() const { return static_cast<bool>(process_); }
    DWORD id() const { return GetProcessId(process_.get()); }

private:
    Handle process_;
    Handle input_;
    Handle output_;
};

} // namespace solvane::host
