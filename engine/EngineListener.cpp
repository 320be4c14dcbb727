#include "EngineListener.h"

#include "GatewayConnection.h"
#include "Strangers.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <random>
#include <system_error>

namespace solvane::engine {

namespace {

// How long to wait where the system could not give a connection, in milliseconds.
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

} // namespace

EngineListener::EngineListener()
    : token_(makeToken()),
      commandArrived_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      isEnding_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      socket_(WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                         WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)) {
    port_ = listenOnLoopback(socket_.get());
    if (port_ != 0)
        acceptor_ = std::thread([this] { accept(); });
}

EngineListener::~EngineListener() {
    SetEvent(isEnding_.get());
    if (acceptor_.joinable())
        acceptor_.join();
}

void EngineListener::accept() {
    const Handle activity(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    WSAEventSelect(socket_.get(), activity.get(), FD_ACCEPT);
    Strangers strangers(token_, activity.get());
    const std::array<HANDLE, 2> events = {isEnding_.get(), activity.get()};
    DWORD patience = INFINITE;
    while (WaitForMultipleObjects(2, events.data(), FALSE, patience) != WAIT_OBJECT_0) {
        // One connection a round: each of the others is listened to once more before it gives way.
        Socket accepted(::accept(socket_.get(), nullptr, nullptr));
        const int fault = accepted ? 0 : WSAGetLastError();
        if (accepted)
            strangers.add(std::move(accepted));
        for (Strangers::Guest& guest : strangers.listen())
            serve(std::move(guest.socket), guest.role);
        patience = fault == 0 ? 0 : strangers.patience();
        if (isPassing(fault))
            patience = std::min(patience, pauseAfterRefusal);
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
        // The thread ends with its connection, and the connection with Octave.
        std::thread([held = std::move(socket)]() mutable {
            Connection connection(std::move(held));
            serveGateway(connection);
        }).detach();
    } catch (const std::system_error&) {
        // Without a thread the connection is hung up on.
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
