#include "Transport.h"

#include "link/EngineClient.h"
#include "link/Pipes.h"

#include <limits>

namespace solvane::gateway {

namespace {

using engine::MessageKind;

constexpr char brokenConnection[] = "the connection to the automation server is broken";

void append(std::string& message, std::uint32_t number) {
    message.append(reinterpret_cast<const char*>(&number), sizeof number);
}

using Connection = std::unique_ptr<engine::EngineClient>;

/// That of the last run, if it is sound. The server starts a thread for each.
Connection idleConnection;

class SocketTransport : public Transport {
public:
    ~SocketTransport() override;

    bool open(const std::string& unitId, std::string& error);

    /// The server knows the block's size and refuses what doesn't fit.
    std::size_t capacity() const override { return std::numeric_limits<std::size_t>::max(); }
    bool exchange(std::string_view request, std::size_t wanted, std::string& reply,
                  std::string& error) override;
    bool read(std::size_t offset, std::size_t count, std::string& bytes, std::string& error) override;

private:
    bool ask(MessageKind kind, std::string_view start, std::string_view rest, std::string& answer,
             std::string& error);

    Connection server_ = std::move(idleConnection);
    bool opened_ = false;
};

SocketTransport::~SocketTransport() {
    std::string ignored;
    if (opened_ && ask(MessageKind::close, {}, {}, ignored, ignored))
        idleConnection = std::move(server_);
}

bool SocketTransport::open(const std::string& unitId, std::string& error) {
    std::string nothing;
    if (!server_) {
        server_ = std::make_unique<engine::EngineClient>();
        if (!server_->connect(engine::gatewayRole, error))
            return false;
        if (!engine::moveToPipes(*server_)) {
            error = brokenConnection;
            return false;
        }
    }
    opened_ = ask(MessageKind::open, unitId, {}, nothing, error);
    return opened_;
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
/// leaves it in `error`.
bool SocketTransport::ask(MessageKind kind, std::string_view start, std::string_view rest,
                          std::string& answer, std::string& error) {
    MessageKind answerKind{};
    std::string body;
    if (!server_->send(kind, start, rest) || !server_->receive(answerKind, body)) {
        error = brokenConnection;
        return false;
    }
    const bool isDone = answerKind == MessageKind::done;
    if (isDone)
        answer += body;
    else
        error = body;
    return isDone;
}

} // namespace

const bool staysLoaded = true;

std::unique_ptr<Transport> openTransport(const std::string& unitId, std::string& error) {
    auto transport = std::make_unique<SocketTransport>();
    if (!transport->open(unitId, error))
        return nullptr;
    return transport;
}

} // namespace solvane::gateway
