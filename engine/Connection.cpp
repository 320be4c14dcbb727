#include "Connection.h"

#include <algorithm>
#include <cstring>

namespace solvane::engine {

namespace {

// A single call to the sockets takes its length as an int.
constexpr std::size_t longestTransfer = 1u << 30;

/// Returns the number of bytes received, 0 at the end of the connection.
std::size_t receiveSome(SOCKET socket, std::byte* bytes, std::size_t count) {
    const int received =
        recv(socket, reinterpret_cast<char*>(bytes), static_cast<int>(std::min(count, longestTransfer)), 0);
    return received > 0 ? static_cast<std::size_t>(received) : 0;
}

} // namespace

bool Connection::refill() {
    begin_ = 0;
    end_ = receiveSome(socket_.get(), buffer_.data(), buffer_.size());
    return end_ > 0;
}

bool Connection::read(std::span<std::byte> bytes) {
    while (!bytes.empty()) {
        if (begin_ == end_ && bytes.size() >= buffer_.size()) {
            const std::size_t received = receiveSome(socket_.get(), bytes.data(), bytes.size());
            if (received == 0)
                return false;
            bytes = bytes.subspan(received);
            continue;
        }
        if (begin_ == end_ && !refill())
            return false;
        const std::size_t count = std::min(bytes.size(), end_ - begin_);
        std::memcpy(bytes.data(), buffer_.data() + begin_, count);
        begin_ += count;
        bytes = bytes.subspan(count);
    }
    return true;
}

bool Connection::readHeader(MessageHeader& header) {
    return readValue(header.kind) && readValue(header.length);
}

bool Connection::skip(std::uint32_t count) {
    while (count > 0) {
        if (begin_ == end_ && !refill())
            return false;
        const std::size_t dropped = std::min<std::size_t>(count, end_ - begin_);
        begin_ += dropped;
        count -= static_cast<std::uint32_t>(dropped);
    }
    return true;
}

bool Connection::send(MessageKind kind, std::span<const std::byte> bytes) {
    if (bytes.size() > longestTransfer)
        return false;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    std::array<char, sizeof kind + sizeof length> header;
    std::memcpy(header.data(), &kind, sizeof kind);
    std::memcpy(header.data() + sizeof kind, &length, sizeof length);

    std::array<WSABUF, 2> buffers = {{
        {static_cast<ULONG>(header.size()), header.data()},
        {length, reinterpret_cast<char*>(const_cast<std::byte*>(bytes.data()))},
    }};
    DWORD sent = 0;
    return WSASend(socket_.get(), buffers.data(), static_cast<DWORD>(buffers.size()), &sent, 0, nullptr,
                   nullptr) == 0 &&
           sent == header.size() + length;
}

bool Connection::isAlive() const {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(socket_.get(), &readable);
    timeval now{};
    if (select(0, &readable, nullptr, nullptr, &now) <= 0)
        return true;
    char byte;
    return recv(socket_.get(), &byte, 1, MSG_PEEK) > 0;
}

} // namespace solvane::engine
