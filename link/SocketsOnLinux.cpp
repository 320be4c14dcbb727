#include "Sockets.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
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

/// Into a pipe, which has no MSG_NOSIGNAL.
std::size_t writeSome(int pipe, const char* bytes, std::size_t count) {
    sigset_t signal, former;
    sigemptyset(&signal);
    sigaddset(&signal, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signal, &former);
    const std::size_t written = uninterrupted([=] { return write(pipe, bytes, count); });
    if (constexpr timespec now{}; written == 0 && !sigismember(&former, SIGPIPE))
        sigtimedwait(&signal, nullptr, &now);
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
    return written;
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
    const std::size_t sent = uninterrupted([=] { return send(native(socket), bytes, count, MSG_NOSIGNAL); });
    return sent > 0 || errno != ENOTSOCK ? sent : writeSome(native(socket), bytes, count);
}

std::size_t receiveSome(SocketHandle socket, char* bytes, std::size_t count) {
    return uninterrupted([=] { return read(native(socket), bytes, count); });
}

} // namespace solvane::engine
