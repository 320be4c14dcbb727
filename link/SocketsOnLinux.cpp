#include "Sockets.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace solvane::engine {

namespace {

int native(SocketHandle socket) {
    return static_cast<int>(socket);
}

/// A signal breaks the wait off, but not the connection in the making.
bool finishConnecting(int socket) {
    pollfd state{socket, POLLOUT, 0};
    while (poll(&state, 1, -1) < 0)
        if (errno != EINTR)
            return false;
    int fault = 0;
    socklen_t size = sizeof fault;
    if (getsockopt(socket, SOL_SOCKET, SO_ERROR, &fault, &size) == 0)
        errno = fault;
    return errno == 0;
}

bool connectTo(int socket, std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int noDelay = 1;
    const bool isConnected =
        connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ||
        (errno == EINTR && finishConnecting(socket));
    return isConnected && setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof noDelay) == 0;
}

/// Calls `pass` until no signal came in between.
template <class Pass>
std::size_t uninterrupted(Pass pass) {
    ssize_t count;
    do
        count = pass();
    while (count < 0 && errno == EINTR);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

} // namespace

SocketHandle connectToLoopback(std::uint16_t port, std::string& reason) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, IPPROTO_TCP);
    if (socket >= 0 && connectTo(socket, port))
        return socket;
    reason = std::strerror(errno);
    if (socket >= 0)
        close(socket);
    return noSocket;
}

void closeSocket(SocketHandle socket) {
    close(native(socket));
}

std::size_t sendSome(SocketHandle socket, const char* bytes, std::size_t count) {
    // A server that is gone is a result of the call, not a signal that ends the process.
    return uninterrupted([=] { return send(native(socket), bytes, count, MSG_NOSIGNAL); });
}

std::size_t receiveSome(SocketHandle socket, char* bytes, std::size_t count) {
    return uninterrupted([=] { return recv(native(socket), bytes, count, 0); });
}

} // namespace solvane::engine
