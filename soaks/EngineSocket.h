/// Simulated neighbours of the engine's socket: the gateway, or any other caller, and the unit.
#pragma once

#include "channel/ChannelNames.h"
#include "com/Text.h"
#include "engine/Connection.h"
#include "tests/engine/AutomationClient.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

namespace solvane::soak {

inline constexpr char unitId[] = "{6E3C2A52-0F3B-4B0C-8A11-3F6F2B7D9C02}";

/// Where an engine listens, and the token of its callers. Initialises the sockets.
struct EngineAddress {
    explicit EngineAddress(engine::AutomationClient& octave)
        : token(narrow(octave.execute(L"printf(getenv('SOLVANE_ENGINE_TOKEN'))"))),
          port(static_cast<std::uint16_t>(std::strtoul(
              narrow(octave.execute(L"printf(getenv('SOLVANE_ENGINE_PORT'))")).c_str(), nullptr, 10))) {
        WSADATA sockets;
        WSAStartup(MAKEWORD(2, 2), &sockets);
    }

    std::string token;
    std::uint16_t port;
};

/// A unit in a run that answers every request with the block as it stands.
class AnsweringUnit {
public:
    AnsweringUnit()
        : mapping_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 2048, unitId)),
          request_(CreateEventA(nullptr, FALSE, FALSE, requestEventName(unitId).c_str())),
          reply_(CreateEventA(nullptr, FALSE, FALSE, replyEventName(unitId).c_str())),
          thread_([this](std::stop_token stop) {
              while (!stop.stop_requested())
                  if (WaitForSingleObject(request_.get(), 100) == WAIT_OBJECT_0)
                      SetEvent(reply_.get());
          }) {}

private:
    Handle mapping_;
    Handle request_;
    Handle reply_;
    std::jthread thread_;
};

/// One connection to the engine. A read waits twenty seconds at most.
class Caller {
public:
    explicit Caller(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            socket_.reset();
        const DWORD patience = 20000;
        setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&patience),
                   sizeof patience);
    }

    bool isConnected() const { return static_cast<bool>(socket_); }
    /// False once the engine has hung up.
    bool write(std::string_view bytes) {
        return send(socket_.get(), bytes.data(), static_cast<int>(bytes.size()), 0) > 0;
    }
    bool read(void* bytes, int count) {
        return count == 0 || recv(socket_.get(), static_cast<char*>(bytes), count, MSG_WAITALL) == count;
    }
    /// Empty if no reply comes.
    std::optional<std::pair<engine::MessageKind, std::string>> reply() {
        engine::MessageKind kind{};
        std::uint32_t length = 0;
        if (!read(&kind, sizeof kind) || !read(&length, sizeof length) || length > (1u << 20))
            return std::nullopt;
        std::string bytes(length, '\0');
        return read(bytes.data(), static_cast<int>(length)) ? std::optional(std::pair(kind, bytes))
                                                            : std::nullopt;
    }
    bool isHungUp() {
        char byte;
        const int received = recv(socket_.get(), &byte, 1, 0);
        return received == 0 || (received < 0 && WSAGetLastError() != WSAETIMEDOUT);
    }
    /// Hangs up abruptly: the other side sees a reset.
    void breakOff() {
        const linger atOnce{1, 0};
        setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce),
                   sizeof atOnce);
        socket_.reset();
    }

private:
    engine::Socket socket_;
};

inline std::string message(char kind, std::uint32_t length, std::string_view bytes) {
    return kind + std::string(reinterpret_cast<const char*>(&length), sizeof length) + std::string(bytes);
}

} // namespace solvane::soak
