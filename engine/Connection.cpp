#include "Connection.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace solvane::engine {

namespace {

// A single call to the sockets takes its length as an int.
constexpr std::size_t longestTransfer = 1u << 30;

} // namespace

std::size_t Connection::receiveSome(std::span<std::byte> bytes) {
    const std::size_t most = std::min(bytes.size(), longestTransfer);
    if (receiving_) {
        DWORD count = 0;
        return ReadFile(receiving_.get(), bytes.data(), static_cast<DWORD>(most), &count, nullptr) ? count
                                                                                                   : 0;
    }
    const int received =
        recv(socket_.get(), reinterpret_cast<char*>(bytes.data()), static_cast<int>(most), 0);
    return received > 0 ? static_cast<std::size_t>(received) : 0;
}

bool Connection::refill() {
    begin_ = 0;
    end_ = receiveSome(buffer_);
    return end_ > 0;
}

bool Connection::read(std::span<std::byte> bytes) {
    while (!bytes.empty()) {
        if (begin_ == end_ && bytes.size() >= buffer_.size()) {
            const std::size_t received = receiveSome(bytes);
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
    if (sending_)
        return sendThroughPipe(header, bytes);

    std::array<WSABUF, 2> buffers = {{
        {static_cast<ULONG>(header.size()), header.data()},
        {length, reinterpret_cast<char*>(const_cast<std::byte*>(bytes.data()))},
    }};
    DWORD sent = 0;
    return WSASend(socket_.get(), buffers.data(), static_cast<DWORD>(buffers.size()), &sent, 0, nullptr,
                   nullptr) == 0 &&
           sent == header.size() + length;
}

/// In one piece: each piece may wake the other side.
bool Connection::sendThroughPipe(std::span<const char> header, std::span<const std::byte> bytes) {
    std::string message(header.begin(), header.end());
    message.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    DWORD sent = 0;
    return WriteFile(sending_.get(), message.data(), static_cast<DWORD>(message.size()), &sent, nullptr) &&
           sent == message.size();
}

void Connection::continueOn(FileHandle receiving, FileHandle sending) {
    receiving_ = std::move(receiving);
    sending_ = std::move(sending);
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
