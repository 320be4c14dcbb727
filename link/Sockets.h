/// The little of TCP that a client on this machine takes, on each system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace solvane::engine {

/// A socket of the system, as wide as any system has them.
using SocketHandle = std::intptr_t;
inline constexpr SocketHandle noSocket = -1;

/// Connects to a port of 127.0.0.1; `noSocket` with the system's reason on failure. Programs that this
/// process starts do not inherit the connection.
SocketHandle connectToLoopback(std::uint16_t port, std::string& reason);
/// This, and what passes bytes, also takes an end of a pipe on Linux.
void closeSocket(SocketHandle socket);

/// Wait until some of the bytes have passed, and return how many; 0 once the connection is gone. A signal
/// does not end the wait.
std::size_t sendSome(SocketHandle socket, const char* bytes, std::size_t count);
std::size_t receiveSome(SocketHandle socket, char* bytes, std::size_t count);

} // namespace solvane::engine
