#include "EngineClient.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

namespace solvane::engine {

namespace {

static_assert(std::endian::native == std::endian::little, "the messages are little-endian");

/// The longest message that the server sends: far above any block, far below what would hurt.
constexpr std::uint32_t longestMessage = 1u << 30;

/// A body is made room for as it comes: a length alone takes no memory.
constexpr std::size_t piece = 1u << 20;

} // namespace

EngineClient::~EngineClient() {
    for (const SocketHandle pipe : {receiving_, sending_})
        if (pipe != socket_)
            closeSocket(pipe);
    if (socket_ != noSocket)
        closeSocket(socket_);
}

bool EngineClient::connect(char role, std::string& error) {
    const char* port = std::getenv(portVariable);
    const char* token = std::getenv(tokenVariable);
    if (!port || !token || std::strlen(token) != tokenLength) {
        error = "this Octave was not started by a unit operation";
        return false;
    }
    std::string reason = "it hangs up";
    socket_ = connectToLoopback(static_cast<std::uint16_t>(std::strtoul(port, nullptr, 10)), reason);
    receiving_ = sending_ = socket_;
    if (socket_ == noSocket || !sendAll(std::string(token) + role)) {
        error = "the automation server cannot be reached: " + reason;
        return false;
    }
    return true;
}

void EngineClient::continueOn(SocketHandle receiving, SocketHandle sending) {
    receiving_ = receiving;
    sending_ = sending;
}

bool EngineClient::send(MessageKind kind, std::string_view start, std::string_view rest) {
    const auto length = static_cast<std::uint32_t>(start.size() + rest.size());
    std::string message(1, static_cast<char>(kind));
    message.append(reinterpret_cast<const char*>(&length), sizeof length).append(start).append(rest);
    return sendAll(message);
}

bool EngineClient::receive(MessageKind& kind, std::string& body) {
    std::uint32_t length = 0;
    if (!fill(&kind, sizeof kind) || !fill(&length, sizeof length) || length > longestMessage)
        return false;
    body.clear();
    while (body.size() < length) {
        const std::size_t start = body.size();
        body.resize(start + std::min(length - start, piece));
        if (!fill(body.data() + start, body.size() - start))
            return false;
    }
    return true;
}

bool EngineClient::sendAll(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t sent = sendSome(sending_, bytes.data(), bytes.size());
        if (sent == 0)
            return false;
        bytes.remove_prefix(sent);
    }
    return true;
}

bool EngineClient::fill(void* bytes, std::size_t count) {
    for (char* next = static_cast<char*>(bytes); count > 0;) {
        const std::size_t received = receiveSome(receiving_, next, count);
        if (received == 0)
            return false;
        next += received;
        count -= received;
    }
    return true;
}

} // namespace solvane::engine
