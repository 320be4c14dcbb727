/// The little of TCP that Octave's side needs, on Linux and on Windows.
#pragma once

#include <cstddef>
#include <cstdint>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <cerrno>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace solvane::engine {

#ifdef _WIN32

using SocketHandle = SOCKET;
constexpr SocketHandle noSocket = INVALID_SOCKET;
constexpr int sendFlags = 0;

inline SocketHandle openSocket() {
    WSADATA sockets;
    if (WSAStartup(MAKEWORD(2, 2), &sockets) != 0)
        return noSocket;
    return WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                      WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
}
inline bool wasInterrupted() {
    return false;
}

#else

using SocketHandle = int;
constexpr SocketHandle noSocket = -1;
// A server that is gone is a result of the call, no signal that ends the process.
constexpr int sendFlags = MSG_NOSIGNAL;

inline SocketHandle openSocket() {
    // Programs that a script starts must not hold the connection open.
    return socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, IPPROTO_TCP);
}
/// A signal came while the caller waited.
inline bool wasInterrupted() {
    return errno == EINTR;
}

#endif

/// A connection to a port of 127.0.0.1, open until the process ends. Every operation is false on failure. One
/// thread may send while another receives.
class LoopbackSocket {
public:
    bool connect(std::uint16_t port) {
        socket_ = openSocket();
        if (socket_ == noSocket)
            return false;
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int noDelay = 1;
        setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&noDelay),
                   sizeof noDelay);
        return ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }

    bool send(const char* bytes, std::size_t count) {
        while (count > 0) {
            const auto sent = ::send(socket_, bytes, static_cast<Count>(count), sendFlags);
            if (sent <= 0)
                return false;
            bytes += sent;
            count -= static_cast<std::size_t>(sent);
        }
        return true;
    }

    bool receive(void* bytes, std::size_t count) {
        char* next = static_cast<char*>(bytes);
        while (count > 0) {
            const auto received = recv(socket_, next, static_cast<Count>(count), 0);
            if (received < 0 && wasInterrupted())
                continue;
            if (received <= 0)
                return false;
            next += received;
            count -= static_cast<std::size_t>(received);
        }
        return true;
    }

private:
#ifdef _WIN32
    using Count = int;
#else
    using Count = std::size_t;
#endif
    SocketHandle socket_ = noSocket;
};

} // namespace solvane::engine
