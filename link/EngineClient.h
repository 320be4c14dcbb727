/// Octave's end of a connection to the automation server that started it.
#pragma once

#include "EngineProtocol.h"
#include "Sockets.h"

#include <string>
#include <string_view>

namespace solvane::engine {

/// Blocking; closes the connection at its end. One thread may send while another receives.
class EngineClient {
public:
    EngineClient() = default;
    /// Takes over a connection.
    explicit EngineClient(SocketHandle connected)
        : socket_(connected), receiving_(connected), sending_(connected) {}
    ~EngineClient();
    EngineClient(const EngineClient&) = delete;
    EngineClient& operator=(const EngineClient&) = delete;

    /// Connects to the server that the environment names, in one of the two roles.
    [[nodiscard]] bool connect(char role, std::string& error);

    /// Sends one message, whose body is `start` and `rest`.
    [[nodiscard]] bool send(MessageKind kind, std::string_view start, std::string_view rest = {});
    [[nodiscard]] bool receive(MessageKind& kind, std::string& body);

    /// From now on messages pass through these, which it takes over. The connection stays, so that the server
    /// notices its end.
    void continueOn(SocketHandle receiving, SocketHandle sending);

private:
    bool sendAll(std::string_view bytes);
    bool fill(void* bytes, std::size_t count);

    SocketHandle socket_ = noSocket;
    // The same, unless there are pipes.
    SocketHandle receiving_ = noSocket;
    SocketHandle sending_ = noSocket;
};

} // namespace solvane::engine
