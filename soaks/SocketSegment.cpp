#include "Damage.h"
#include "Door.h"
#include "EngineSocket.h"
#include "Folders.h"
#include "ProcessGrowth.h"
#include "Processes.h"
#include "Segments.h"
#include "tests/engine/AutomationClient.h"

#include <array>
#include <optional>

namespace solvane::soak {

namespace {

using namespace std::string_view_literals;
using namespace solvane::engine;

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

class SocketDoor final : public Door {
public:
    Verdict attempt(std::uint32_t seed, int number) override {
        Damage damage(seed, number, snippets);
        // The first flood comes before the counting starts, since it makes what later floods reuse.
        Verdict verdict = number % 200 == 0 ? flood(damage) : call(damage);
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

    /// Many callers at once that send nothing.
    Verdict flood(Damage& damage) const {
        std::vector<Caller> callers;
        for (int i = 0; i < 100; ++i)
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
    const EngineAddress address_{octave_};
    const std::string& token_ = address_.token;
    const std::uint16_t port_ = address_.port;
};

} // namespace

void soakSocket(const Effort& effort, const Figures& figures) {
    SocketDoor door;
    soakDoor(door, effort, effort.of(2000, 100000), figures);
    door.putEngine(figures);
}

} // namespace solvane::soak
