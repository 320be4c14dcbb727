#include "Transport.h"

#include "../engine/EngineProtocol.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace solvane::gateway {

namespace {

static_assert(std::endian::native == std::endian::little, "the messages are little-endian");

using engine::MessageKind;

/// The longest message that a server of ours sends: far above any block, far below what would hurt.
constexpr std::uint32_t longestMessage = 1u << 30;

void append(std::string& message, std::uint32_t number) {
    message.append(reinterpret_cast<const char*>(&number), sizeof number);
}

class SocketTransport : public Transport {
public:
    SocketTransport() = default;
    SocketTransport(const SocketTransport&) = delete;
    SocketTransport& operator=(const SocketTransport&) = delete;
    ~SocketTransport() override;

    bool open(const std::string& unitId, std::string& error);

    /// The server knows the block's size and refuses what doesn't fit.
    std::size_t capacity() const override { return std::numeric_limits<std::size_t>::max(); }
    bool exchange(std::string_view request, std::size_t wanted, std::string& reply,
                  std::string& error) override;
    bool read(std::size_t offset, std::size_t count, std::string& bytes, std::string& error) override;

private:
    bool connectToServer(std::string& error);
    bool ask(MessageKind kind, std::string_view start, std::string_view rest, std::string& answer,
             std::string& error);
    bool send(std::string_view bytes);
    bool receive(char* bytes, std::size_t count);

    int socket_ = -1;
    bool opened_ = false;
};

SocketTransport::~SocketTransport() {
    std::string ignored;
    if (opened_)
        ask(MessageKind::close, {}, {}, ignored, ignored);
    if (socket_ >= 0)
        ::close(socket_);
}

bool SocketTransport::open(const std::string& unitId, std::string& error) {
    std::string nothing;
    opened_ = connectToServer(error) && ask(MessageKind::open, unitId, {}, nothing, error);
    return opened_;
}

bool SocketTransport::connectToServer(std::string& error) {
    const char* port = std::getenv(engine::portVariable);
    const char* token = std::getenv(engine::tokenVariable);
    if (!port || !token) {
        error = "this Octave was not started by a unit operation";
        return false;
    }
    socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(std::strtoul(port, nullptr, 10)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int noDelay = 1;
    if (socket_ < 0 || ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof noDelay) != 0 ||
        !send(std::string(token) + engine::gatewayRole)) {
        error = std::string("the automation server cannot be reached: ") + std::strerror(errno);
        return false;
    }
    return true;
}

bool SocketTransport::exchange(std::string_view request, std::size_t wanted, std::string& reply,
                               std::string& error) {
    std::string head;
    append(head, static_cast<std::uint32_t>(wanted));
    reply.clear();
    return ask(MessageKind::exchange, head, request, reply, error);
}

bool SocketTransport::read(std::size_t offset, std::size_t count, std::string& bytes, std::string& error) {
    std::string range;
    append(range, static_cast<std::uint32_t>(offset));
    append(range, static_cast<std::uint32_t>(count));
    return ask(MessageKind::read, range, {}, bytes, error);
}

/// Sends one message, whose body is `start` and `rest`, and appends the body of its answer to `answer`, or
/// leaves it in `error`. A connection that broke stays broken: each further call fails the same way.
bool SocketTransport::ask(MessageKind kind, std::string_view start, std::string_view rest,
                          std::string& answer, std::string& error) {
    std::string message(1, static_cast<char>(kind));
    append(message, static_cast<std::uint32_t>(start.size() + rest.size()));
    message.append(start).append(rest);

    char answerKind = 0;
    std::uint32_t length = 0;
    bool ok = send(message) && receive(&answerKind, 1) &&
              receive(reinterpret_cast<char*>(&length), sizeof length) && length <= longestMessage;
    std::string body(ok ? length : 0, '\0');
    ok = ok && receive(body.data(), body.size());
    if (!ok) {
        error = "the connection to the automation server is broken";
        return false;
    }
    const bool done = answerKind == static_cast<char>(MessageKind::done);
    if (done)
        answer += body;
    else
        error = body;
    return done;
}

bool SocketTransport::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        if (sent > 0)
            bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

bool SocketTransport::receive(char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t received = ::recv(socket_, bytes, count, 0);
        if (received == 0 || (received < 0 && errno != EINTR))
            return false;
        if (received > 0) {
            bytes += received;
            count -= static_cast<std::size_t>(received);
        }
    }
    return true;
}

} // namespace

std::unique_ptr<Transport> openTransport(const std::string& unitId, std::string& error) {
    auto transport = std::make_unique<SocketTransport>();
    if (!transport->open(unitId, error))
        return nullptr;
    return transport;
}

} // namespace solvane::gateway
