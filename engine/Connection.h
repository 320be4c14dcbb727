/// One TCP connection to Octave's side, on which messages pass, or through two pipes beside it.
#pragma once

#include "link/EngineProtocol.h"

#include <winsock2.h>

#include "com/Handle.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace solvane::engine {

// clang-format off
struct SocketPolicy { using Type = SOCKET; static Type empty() { return INVALID_SOCKET; } static void close(Type s) { closesocket(s); } };
// clang-format on

using Socket = Unique<SocketPolicy>;

/// The first bytes of a message; `length` bytes follow.
struct MessageHeader {
    MessageKind kind;
    std::uint32_t length;
};

/// Used by one thread. All operations except `isAlive` block, and return false once the other side has closed
/// the connection; so does a `send` of more than 1 GiB.
class Connection {
public:
    Connection() = default;
    explicit Connection(Socket socket) : socket_(std::move(socket)) {}

    explicit operator bool() const { return static_cast<bool>(socket_); }
    SOCKET socket() const { return socket_.get(); }

    /// Fills all of `bytes`.
    bool read(std::span<std::byte> bytes);
    template <class Value>
    bool readValue(Value& value) {
        return read(std::as_writable_bytes(std::span(&value, 1)));
    }
    bool readHeader(MessageHeader& header);
    /// Reads `count` bytes and drops them.
    bool skip(std::uint32_t count);

    bool send(MessageKind kind, std::span<const std::byte> bytes);
    bool send(MessageKind kind, std::string_view text) { return send(kind, std::as_bytes(std::span(text))); }

    /// From now on messages pass through these pipes. The socket stays, for `isAlive`.
    void continueOn(FileHandle receiving, FileHandle sending);

    /// Whether the other side still holds the connection, as far as is known now.
    bool isAlive() const;

private:
    bool refill();
    /// Returns the number of bytes received, 0 at the end of the connection.
    std::size_t receiveSome(std::span<std::byte> bytes);
    bool sendThroughPipe(std::span<const char> header, std::span<const std::byte> bytes);

    Socket socket_;
    FileHandle receiving_;
    FileHandle sending_;
    // Most messages are small: one system call reads a whole message.
    std::array<std::byte, 4096> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

} // namespace solvane::engine
