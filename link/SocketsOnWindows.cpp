#include "Sockets.h"

#include <winsock2.h>

#include <algorithm>
#include <system_error>

namespace solvane::engine {

namespace {

SOCKET native(SocketHandle socket) {
    return static_cast<SOCKET>(socket);
}

/// A call takes its length as an int.
int lengthOf(std::size_t count) {
    return static_cast<int>(std::min<std::size_t>(count, 1u << 30));
}

std::size_t passed(int count) {
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool connectTo(SOCKET socket, std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const BOOL noDelay = TRUE;
    return connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
           setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&noDelay),
                      sizeof noDelay) == 0;
}

} // namespace

SocketHandle connectToLoopback(std::uint16_t port, std::string& reason) {
    WSADATA sockets;
    SOCKET socket = INVALID_SOCKET;
    if (WSAStartup(MAKEWORD(2, 2), &sockets) == 0)
        socket = WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                            WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
    if (socket != INVALID_SOCKET && connectTo(socket, port))
        return static_cast<SocketHandle>(socket);
    reason = std::system_category().message(WSAGetLastError());
    if (socket != INVALID_SOCKET)
        closesocket(socket);
    return noSocket;
}

void closeSocket(SocketHandle socket) {
    closesocket(native(socket));
}

std::size_t sendSome(SocketHandle socket, const char* bytes, std::size_t count) {
    return passed(send(native(socket), bytes, lengthOf(count), 0));
}

std::size_t receiveSome(SocketHandle socket, char* bytes, std::size_t count) {
    return passed(recv(native(socket), bytes, lengthOf(count), 0));
}

} // namespace solvane::engine
