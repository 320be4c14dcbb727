#include "EngineListener.h"

#include "GatewayConnection.h"

#include <array>
#include <mutex>
#include <random>
#include <system_error>

namespace solvane::engine {

/// Where the connection that takes commands is left for the listener's owner.
struct EngineListener::CommandConnection {
    CriticalSection lock;
    std::optional<Connection> connection;
    Handle arrived{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

namespace {

// Octave's side greets as soon as it is connected.
constexpr DWORD greetingTimeout = 5000;

std::string makeToken() {
    constexpr char digits[] = "0123456789abcdef";
    std::random_device random;
    std::string token(tokenLength, '0');
    for (char& digit : token)
        digit = digits[random() % 16];
    return token;
}

sockaddr_in loopback() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// Listens on a port of the system's choice, which is 0 on failure.
std::uint16_t listenOnLoopback(SOCKET socket) {
    sockaddr_in address = loopback();
    int size = sizeof address;
    if (bind(socket, reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
        listen(socket, SOMAXCONN) != 0 ||
        getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return 0;
    return ntohs(address.sin_port);
}

/// Whether the listener may still accept the next connection: the caller was gone already, or too many are
/// served at once.
bool isPassing(int acceptFault) {
    return acceptFault == WSAECONNRESET || acceptFault == WSAEMFILE || acceptFault == WSAENOBUFS;
}

/// Reads the greeting. Returns the role, or 0 for a stranger.
char readRole(Connection& connection, std::string_view token) {
    std::array<char, tokenLength> offered;
    char role = 0;
    connection.setReadTimeout(greetingTimeout);
    if (!connection.readValue(offered) || !connection.readValue(role) ||
        std::string_view(offered.data(), offered.size()) != token)
        return 0;
    connection.setReadTimeout(0);
    return role;
}

} // namespace

EngineListener::EngineListener()
    : token_(makeToken()),
      command_(std::make_shared<CommandConnection>()),
      socket_(WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                         WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)) {
    port_ = listenOnLoopback(socket_.get());
    if (port_ != 0)
        acceptor_ = std::thread([this] { accept(); });
}

EngineListener::~EngineListener() {
    socket_.reset(); // ends the waiting accept
    if (acceptor_.joinable())
        acceptor_.join();
}

void EngineListener::accept() {
    for (;;) {
        Socket accepted(::accept(socket_.get(), nullptr, nullptr));
        if (!accepted) {
            if (!isPassing(WSAGetLastError()))
                return;
            Sleep(10);
            continue;
        }
        const BOOL noDelay = TRUE;
        setsockopt(accepted.get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&noDelay),
                   sizeof noDelay);
        // The thread ends with its connection, and the connection with Octave.
        auto serve = [connection = Connection(std::move(accepted)), token = token_,
                      command = command_]() mutable {
            const char role = readRole(connection, token);
            if (role == gatewayRole) {
                serveGateway(connection);
            } else if (role == commandRole) {
                const std::lock_guard guard(command->lock);
                command->connection = std::move(connection);
                SetEvent(command->arrived.get());
            }
        };
        try {
            std::thread(std::move(serve)).detach();
        } catch (const std::system_error&) {
            // Without a thread the connection is hung up on.
        }
    }
}

std::optional<Connection> EngineListener::waitForCommandConnection(HANDLE process, DWORD milliseconds) {
    const std::array<HANDLE, 2> handles = {command_->arrived.get(), process};
    if (WaitForMultipleObjects(process ? 2 : 1, handles.data(), FALSE, milliseconds) != WAIT_OBJECT_0)
        return std::nullopt;
    const std::lock_guard guard(command_->lock);
    return std::exchange(command_->connection, std::nullopt);
}

} // namespace solvane::engine
