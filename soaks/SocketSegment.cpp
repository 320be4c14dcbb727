#include "../tests/engine/AutomationClient.h"
#include "Damage.h"
#include "Door.h"
#include "Folders.h"
#include "Growth.h"
#include "Processes.h"
#include "Segments.h"
#include "com/Text.h"

#include "../engine/Connection.h"

#include <array>
#include <optional>
#include <stop_token>
#include <thread>

namespace solvane::soak {

namespace {

using namespace std::string_view_literals;
using namespace solvane::engine;

constexpr char unitId[] = "{6E3C2A52-0F3B-4B0C-8A11-3F6F2B7D9C02}";
constexpr std::array snippets = {"\xFF\xFF\xFF\xFF"sv,
                                 "\0\0\0\0"sv,
                                 "\0\0\0\x80"sv,
                                 "\1\0\0\0"sv,
                                 "\0\x10\0\0"sv,
                                 "{"sv,
                                 "O"sv,
                                 "X"sv,
                                 "R"sv,
                                 "Q"sv,
                                 "{00000000-0000-0000-0000-000000000000}"sv};

/// A unit in a run that answers whatever it is asked with the block as it stands.
class AnsweringUnit {
public:
    AnsweringUnit()
        : mapping_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 2048, unitId)),
          request_(CreateEventA(nullptr, FALSE, FALSE, (std::string(unitId) + "_in").c_str())),
          reply_(CreateEventA(nullptr, FALSE, FALSE, (std::string(unitId) + "_out").c_str())),
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
    void write(std::string_view bytes) {
        send(socket_.get(), bytes.data(), static_cast<int>(bytes.size()), 0);
    }
    bool read(void* bytes, int count) {
        return count == 0 || recv(socket_.get(), static_cast<char*>(bytes), count, MSG_WAITALL) == count;
    }
    /// Nothing where none comes.
    std::optional<std::pair<MessageKind, std::string>> reply() {
        MessageKind kind{};
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
    /// Hangs up without the manners of it: the other side sees a reset.
    void breakOff() {
        const linger atOnce{1, 0};
        setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce),
                   sizeof atOnce);
        socket_.reset();
    }

private:
    Socket socket_;
};

std::string message(char kind, std::uint32_t length, std::string_view bytes) {
    return kind + std::string(reinterpret_cast<const char*>(&length), sizeof length) + std::string(bytes);
}

class SocketDoor final : public Door {
public:
    SocketDoor() {
        WSADATA sockets;
        WSAStartup(MAKEWORD(2, 2), &sockets);
        token_ = narrow(octave_.execute(L"printf(getenv('SOLVANE_ENGINE_TOKEN'))"));
        const std::string port = narrow(octave_.execute(L"printf(getenv('SOLVANE_ENGINE_PORT'))"));
        port_ = static_cast<std::uint16_t>(std::strtoul(port.c_str(), nullptr, 10));
    }

    Verdict attempt(std::uint32_t seed, int number) override {
        Damage damage(seed, number, snippets);
        Verdict verdict = call(damage);
        if (verdict.fault.empty() && number % 50 == 0 && octave_.execute(L"disp(1)") != L"1\n")
            verdict.fault = "the engine takes no more commands";
        return verdict;
    }

    void startCounting() override {
        const std::vector<DWORD> servers = engineServersOf(GetCurrentProcessId());
        letGo();
        growth_.emplace("engine", servers.empty() ? 0 : servers[0]);
    }

    void putEngine(const Figures& figures) const {
        letGo();
        growth_->put(figures);
    }

private:
    /// The engine may take as long to see that its callers are gone.
    static void letGo() { Sleep(6000); }

    Verdict call(Damage& damage) {
        if (damage.oneIn(200))
            return flood(damage);
        Caller caller(port_);
        if (!caller.isConnected())
            return {.fault = "the engine takes no connection"};
        switch (damage.below(8)) {
        case 0:
            return hangUpOn(caller, otherToken(damage) + gatewayRole, "a wrong token");
        case 1:
            return hangUpOn(caller, token_ + "?", "an unknown role");
        case 2:
            caller.write((token_ + gatewayRole).substr(0, damage.below(tokenLength + 1)));
            if (damage.oneIn(2))
                caller.breakOff();
            return {};
        case 3: // a message that stops in the middle
            caller.write(token_ + gatewayRole +
                         message("OXRQ?"[damage.below(5)], 1u << damage.below(32), "half"));
            if (damage.oneIn(2))
                caller.breakOff();
            return {};
        default:
            caller.write(token_ + gatewayRole);
            return converse(caller, damage);
        }
    }

    static Verdict converse(Caller& caller, Damage& damage) {
        if (damage.oneIn(2)) {
            caller.write(message('O', sizeof unitId - 1, unitId));
            if (!caller.reply())
                return {.fault = "no answer to the opening of a unit"};
        }
        bool isDone = false;
        for (std::size_t messages = 1 + damage.below(5); messages > 0; --messages) {
            std::string bytes("\x10\0\0\0\0\0\0\0"sv);
            damage.to(bytes);
            bytes.append(damage.oneIn(4) ? damage.below(6000) : 0, 'x');
            const char kind =
                damage.oneIn(8) ? static_cast<char>(damage.below(256)) : "OXRQ"[damage.below(4)];
            caller.write(message(kind, static_cast<std::uint32_t>(bytes.size()), bytes));
            const auto reply = caller.reply();
            if (!reply)
                return {.fault = std::string("no answer to a message of kind ") + kind};
            isDone |= reply->first == MessageKind::done;
            if (reply->first != MessageKind::done &&
                (reply->first != MessageKind::failed || reply->second.empty()))
                return {.fault = std::string("a refusal without a text of a message of kind ") + kind};
        }
        return {.isAccepted = isDone};
    }

    static Verdict hangUpOn(Caller& caller, const std::string& greeting, const char* what) {
        caller.write(greeting);
        return {.fault = caller.isHungUp() ? "" : std::string("the engine listens on to ") + what};
    }

    std::string otherToken(Damage& damage) const {
        std::string other = token_;
        other[damage.below(tokenLength)] ^= static_cast<char>(1 + damage.below(7));
        return other;
    }

    /// Many at once who say nothing.
    Verdict flood(Damage& damage) const {
        std::vector<Caller> callers;
        for (std::size_t count = 20 + damage.below(80); count > 0; --count)
            if (!callers.emplace_back(port_).isConnected())
                return {.fault = "the engine takes no connection"};
        for (Caller& caller : callers)
            if (damage.oneIn(2))
                caller.breakOff();
        return {};
    }

    TemporaryFolder temporary_;
    AutomationClient octave_;
    std::optional<Growth> growth_;
    AnsweringUnit unit_;
    std::string token_;
    std::uint16_t port_ = 0;
};

} // namespace

void soakSocket(const Effort& effort, const Figures& figures) {
    SocketDoor door;
    soakDoor(door, effort, effort.of(2000, 100000), figures);
    door.putEngine(figures);
}

} // namespace solvane::soak
