/// Takes the connections that one Octave process makes to the server.
#pragma once

#include "Connection.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace solvane::engine {

/// Listens on 127.0.0.1 for its lifetime. Recognises connections by their greeting, keeps the one that takes
/// commands for its owner, and serves each gateway connection on a thread of its own. Closes connections
/// without a greeting after some seconds, or sooner if there are many: these strangers share one thread.
class EngineListener {
public:
    EngineListener();
    ~EngineListener();
    EngineListener(const EngineListener&) = delete;
    EngineListener& operator=(const EngineListener&) = delete;

    /// False if no port could be opened.
    explicit operator bool() const { return port_ != 0; }
    std::uint16_t port() const { return port_; }
    const std::string& token() const { return token_; }

    /// Waits for the connection that takes commands; empty after `milliseconds`, or as soon as `process`,
    /// which may be null, has ended.
    std::optional<Connection> waitForCommandConnection(HANDLE process, DWORD milliseconds);

private:
    void accept();
    void serve(Socket socket, char role);

    std::string token_;
    std::uint16_t port_ = 0;
    CriticalSection lock_;
    Socket command_; // guarded by lock_
    Handle commandArrived_;
    Socket bell_; // readable when the acceptor must end
    Socket socket_;
    std::thread acceptor_;
};

} // namespace solvane::engine
