#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane::host {

/// A process of this program that answers each line with a line. Its owner's thread only waits for it.
class WorkerProcess {
public:
    WorkerProcess() = default;
    /// Closes the input, upon which the process ends. One that does not is ended by force.
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Starts `SolvaneHost ARGUMENTS`. One thread at a time may start a process, since handles are inherited.
    [[nodiscard]] bool start(const std::wstring& arguments, std::string& error);

    /// Sends a line with its end, and waits for the answer. False if the process has ended.
    [[nodiscard]] bool ask(const std::string& line, std::string& answer);

    /// Ends the process at once, also while another thread asks it.
    void terminate();

    bool hasStarted() const { return static_cast<bool>(process_); }

private:
    Handle process_;
    Handle input_;
    Handle output_;
    std::string received_; ///< after the last answer
};

} // namespace solvane::host
