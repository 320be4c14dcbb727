#include "EngineListener.h"

#include "GatewayConnection.h"
#include "Strangers.h"

#include <array>
#include <mutex>
#include <random>
#include <system_error>

namespace solvane::engine {

namespace {

// How long to wait after the system refused something, in milliseconds.
constexpr DWORD pauseAfterRefusal = 10;

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

/// Binds to a port that the system chooses and writes to `address`.
bool bindToLoopback(SOCKET socket, sockaddr_in& address) {
    address = loopback();
    int size = sizeof address;
    return bind(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0 &&
           getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) == 0;
}

/// The port, or 0 on failure. Accepting does not wait for a connection that was closed meanwhile.
std::uint16_t listenOnLoopback(SOCKET socket) {
    sockaddr_in address;
    u_long isNonBlocking = 1;
    if (!bindToLoopback(socket, address) || listen(socket, SOMAXCONN) != 0 ||
        ioctlsocket(socket, FIONBIO, &isNonBlocking) != 0)
        return 0;
    return ntohs(address.sin_port);
}

/// Connects a datagram socket to itself: it receives from nobody else, and is readable once it has sent
/// something.
bool makeBell(SOCKET socket) {
    sockaddr_in address;
    return bindToLoopback(socket, address) &&
           connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

Socket openSocket(int type, int protocol) {
    return Socket(
        WSASocketW(AF_INET, type, protocol, nullptr, 0, WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT));
}

} // namespace

EngineListener::EngineListener()
    : token_(makeToken()),
      commandArrived_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      bell_(openSocket(SOCK_DGRAM, IPPROTO_UDP)),
      socket_(openSocket(SOCK_STREAM, IPPROTO_TCP)) {
    if (makeBell(bell_.get()))
        port_ = listenOnLoopback(socket_.get());
    if (port_ != 0)
        acceptor_ = std::thread([this] { accept(); });
}

EngineListener::~EngineListener() {
    send(bell_.get(), "", 1, 0);
    if (acceptor_.joinable())
        acceptor_.join();
}

// Each round asks for the state of the sockets. An event would report a change only once; under load Wine
// loses some, after which the listener would wait forever.
void EngineListener::accept() {
    static_assert(Strangers::most + 2 <= FD_SETSIZE);
    Strangers strangers(token_);
    for (;;) {
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(bell_.get(), &readable);
        FD_SET(socket_.get(), &readable);
        strangers.joinIn(readable);
        std::optional<timeval> patience = strangers.patience();
        if (select(0, &readable, nullptr, nullptr, patience ? &*patience : nullptr) < 0) {
            FD_ZERO(&readable);
            Sleep(pauseAfterRefusal);
        }
        if (FD_ISSET(bell_.get(), &readable))
            return;
        for (Strangers::Guest& guest : strangers.listen(readable))
            serve(std::move(guest.socket), guest.role);
        if (!FD_ISSET(socket_.get(), &readable))
            continue;
        // One connection a round: before a new one displaces an old one, the old one is read once more.
        if (Socket accepted(::accept(socket_.get(), nullptr, nullptr)); accepted)
            strangers.add(std::move(accepted));
        else if (WSAGetLastError() != WSAEWOULDBLOCK)
            Sleep(pauseAfterRefusal);
    }
}

void EngineListener::serve(Socket socket, char role) {
    const BOOL noDelay = TRUE;
    setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&noDelay),
               sizeof noDelay);
    if (role == commandRole) {
        const std::lock_guard guard(lock_);
        command_ = std::move(socket);
        SetEvent(commandArrived_.get());
        return;
    }
    try {
        // The thread ends with its connection, which ends with Octave.
        std::thread([held = std::move(socket)]() mutable {
            Connection connection(std::move(held));
            serveGateway(connection);
        }).detach();
    } catch (const std::system_error&) {
        // Without a thread the connection is closed.
    }
}

std::optional<Connection> EngineListener::waitForCommandConnection(HANDLE process, DWORD milliseconds) {
    const std::array<HANDLE, 2> handles = {commandArrived_.get(), process};
    if (WaitForMultipleObjects(process ? 2 : 1, handles.data(), FALSE, milliseconds) != WAIT_OBJECT_0)
        return std::nullopt;
    const std::lock_guard guard(lock_);
    return std::optional<Connection>(std::in_place, std::move(command_));
}

} // namespace solvane::engine
