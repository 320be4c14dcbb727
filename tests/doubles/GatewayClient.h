/// The gateway's side of the channel, played on the thread on which a script would run.
#pragma once

#include "Wire.h"
#include "com/Handle.h"

#include <source_location>
#include <string>
#include <string_view>

namespace solvane {

class GatewayClient {
public:
    /// Opens the run of the unit whose initRun.m lies in the folder. A failure is a test failure.
    explicit GatewayClient(const std::wstring& workingFolder);

    bool isOpen() const { return static_cast<bool>(view_); }

    /// Puts a command into the block and signals; the answer stays unread.
    void send(const Wire& command) { send(command.bytes()); }
    void send(std::string_view command);
    /// Waits for the answer to what was sent. False where none comes; else the whole block as the unit left
    /// it.
    bool receive(std::string& block);

    /// Sends a command and gives the whole block as the unit left it.
    std::string call(const Wire& command);

    /// Sends a command and demands that the unit wrote this reply and not a byte more.
    void expect(const Wire& command, const Wire& reply,
                std::source_location where = std::source_location::current());

    /// The size that the unit takes the block to have, seen in where it ends a message that is too long.
    std::size_t blockSize();

private:
    std::size_t size_ = 0; ///< of the view: whole pages
    Handle mapping_;
    MappedView view_;
    Handle requestEvent_;
    Handle replyEvent_;
};

/// The text between the quotes behind "unit_ID=".
std::string unitIdOf(const std::wstring& workingFolder);

} // namespace solvane
