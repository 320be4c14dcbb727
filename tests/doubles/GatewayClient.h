/// The gateway's side of the channel, played on the thread on which a script would run.
#pragma once

#include "com/Handle.h"

#include <cstdint>
#include <source_location>
#include <string>
#include <string_view>

namespace solvane {

/// Bytes of the wire, written in order.
class Wire {
public:
    Wire& operator<<(std::uint32_t number) { return append(&number, sizeof number); }
    Wire& operator<<(std::int32_t number) { return append(&number, sizeof number); }
    Wire& operator<<(double number) { return append(&number, sizeof number); }
    /// With its NUL.
    Wire& operator<<(const std::string& text) { return append(text.c_str(), text.size() + 1); }
    const std::string& bytes() const { return bytes_; }

private:
    Wire& append(const void* data, std::size_t size) {
        bytes_.append(static_cast<const char*>(data), size);
        return *this;
    }
    std::string bytes_;
};

inline Wire request(std::uint32_t code) {
    return Wire() << code;
}
inline Wire succeeded() {
    return Wire() << 0u;
}
inline Wire refused(const std::string& message) {
    return Wire() << 1u << message;
}

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
