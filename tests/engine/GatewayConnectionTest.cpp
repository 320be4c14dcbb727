// Plays both neighbours of the server's gateway service: the gateway inside Octave, on a socket, and the
// unit, at the block and the events.
#include "AutomationClient.h"

#include "ProcessUsage.h"
#include "channel/ChannelNames.h"
#include "com/Text.h"
#include "engine/Connection.h"

#include <gmock/gmock.h>

#include <numeric>

namespace solvane::engine {

namespace {

using testing::HasSubstr;

constexpr char unitId[] = "{6E3C2A52-0F3B-4B0C-8A11-3F6F2B7D9C01}";

struct Reply {
    MessageKind kind{};
    std::string bytes;
};

class Gateway {
public:
    /// Connects without a word.
    explicit Gateway(std::uint16_t port) {
        socket_.reset(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(connect(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        const DWORD patience = 10000;
        setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&patience),
                   sizeof patience);
    }

    void write(std::string_view bytes) {
        EXPECT_EQ(send(socket_.get(), bytes.data(), static_cast<int>(bytes.size()), 0),
                  static_cast<int>(bytes.size()));
    }
    /// False once the other side has hung up.
    bool tryToWrite(std::string_view bytes) {
        return send(socket_.get(), bytes.data(), static_cast<int>(bytes.size()), 0) > 0;
    }
    void sendMessage(char kind, std::string_view bytes) {
        const auto length = static_cast<std::uint32_t>(bytes.size());
        write(kind + std::string(reinterpret_cast<const char*>(&length), sizeof length) + std::string(bytes));
    }
    bool read(void* bytes, std::size_t count) {
        auto* next = static_cast<char*>(bytes);
        while (count > 0) {
            const int received = recv(socket_.get(), next, static_cast<int>(count), 0);
            if (received <= 0)
                return false;
            next += received;
            count -= static_cast<std::size_t>(received);
        }
        return true;
    }
    Reply receive() {
        Reply reply;
        std::uint32_t length = 0;
        if (!read(&reply.kind, 1) || !read(&length, sizeof length))
            return {};
        reply.bytes.resize(length);
        return read(reply.bytes.data(), length) ? reply : Reply{};
    }
    Reply ask(char kind, std::string_view bytes) {
        sendMessage(kind, bytes);
        return receive();
    }
    bool isHungUp() {
        char byte;
        const int received = recv(socket_.get(), &byte, 1, 0);
        return received == 0 || (received < 0 && WSAGetLastError() == WSAECONNRESET);
    }
    void hangUp() { socket_.reset(); }

private:
    Socket socket_;
};

std::string number(std::uint32_t value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

/// A unit in a run.
class Unit {
public:
    explicit Unit(DWORD size)
        : mapping_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, unitId)),
          view_(MapViewOfFile(mapping_.get(), FILE_MAP_WRITE, 0, 0, 0)),
          request_(CreateEventA(nullptr, FALSE, FALSE, requestEventName(unitId).c_str())),
          reply_(CreateEventA(nullptr, FALSE, FALSE, replyEventName(unitId).c_str())) {}

    char* block() { return static_cast<char*>(view_.get()); }
    bool waitForRequest() { return WaitForSingleObject(request_.get(), 10000) == WAIT_OBJECT_0; }
    void reply() { SetEvent(reply_.get()); }

private:
    Handle mapping_;
    MappedView view_;
    Handle request_;
    Handle reply_;
};

/// Whether anybody holds the unit's events; the block's name goes with the unit's own handle.
bool isUnitHeld() {
    return static_cast<bool>(Handle(OpenEventA(SYNCHRONIZE, FALSE, requestEventName(unitId).c_str())));
}

class GatewayConnection : public testing::Test {
protected:
    GatewayConnection() {
        WSADATA sockets;
        EXPECT_EQ(WSAStartup(MAKEWORD(2, 2), &sockets), 0);
        port = static_cast<std::uint16_t>(std::stoi(octave.execute(L"disp(getenv('SOLVANE_ENGINE_PORT'))")));
        token = narrow(octave.execute(L"printf(getenv('SOLVANE_ENGINE_TOKEN'))"));
    }
    Gateway connectGateway() {
        Gateway gateway(port);
        gateway.write(token + gatewayRole);
        return gateway;
    }

    AutomationClient octave;
    std::uint16_t port = 0;
    std::string token;
};

TEST_F(GatewayConnection, carriesRequestsToTheUnitAndItsRepliesBack) {
    constexpr DWORD size = 1 << 20;
    Unit unit(size);
    Gateway gateway = connectGateway();
    ASSERT_EQ(gateway.ask('O', unitId).kind, MessageKind::done);

    for (const std::size_t length : {std::size_t{4}, std::size_t{size}}) {
        std::string request(length, '\0');
        std::iota(request.begin(), request.end(), static_cast<char>(length % 251));
        gateway.sendMessage('X', number(16) + request);
        ASSERT_TRUE(unit.waitForRequest());
        EXPECT_EQ(std::string_view(unit.block(), length), request);
        for (DWORD i = 0; i < size; ++i)
            unit.block()[i] = static_cast<char>(i * 7 + i / 256);
        unit.reply();
        const Reply reply = gateway.receive();
        EXPECT_EQ(reply.kind, MessageKind::done);
        EXPECT_EQ(reply.bytes, std::string(unit.block(), 16));
    }
    EXPECT_EQ(gateway.ask('R', number(16) + number(700000)).bytes, std::string(unit.block() + 16, 700000));
    EXPECT_EQ(gateway.ask('R', number(size - 5) + number(100)).bytes,
              std::string(unit.block() + size - 5, 5));
    EXPECT_EQ(gateway.ask('R', number(0xFFFFFFF0) + number(0xFFFFFFF0)).bytes, "");

    Gateway second = connectGateway();
    EXPECT_THAT(second.ask('O', unitId).bytes, HasSubstr("another script is running"));
    EXPECT_EQ(gateway.ask('Q', "").kind, MessageKind::done);
    EXPECT_EQ(second.ask('O', unitId).kind, MessageKind::done);
    EXPECT_EQ(gateway.ask('R', number(0) + number(4)).kind, MessageKind::failed);
}

TEST_F(GatewayConnection, rejectsImpossibleRequestsAndServesOn) {
    Unit unit(2048); // a page of 4096 bytes
    Gateway gateway = connectGateway();
    EXPECT_THAT(gateway.ask('X', number(4) + "abcd").bytes, HasSubstr("No unit is open"));
    EXPECT_THAT(gateway.ask('R', number(0) + number(4)).bytes, HasSubstr("No unit is open"));
    EXPECT_THAT(gateway.ask('O', "{00000000-0000-0000-0000-000000000000}").bytes, HasSubstr("no run"));

    ASSERT_EQ(gateway.ask('O', unitId).kind, MessageKind::done);
    struct Case {
        char kind;
        std::string bytes;
    };
    const Case refused[] = {
        {'X', number(4) + std::string(4097, 'x')}, // beyond the block
        {'X', number(4) + "abc"},                  // no command code
        {'X', ""},
        {'R', "abc"},
        {'P', "abc"},
        {'P', std::string(2 * sizeof(PipeEnd), 0)}, // of no process
        {'E', "disp(1)"},                           // belongs to the other role
        {'?', std::string(20 * 1000 * 1000, 'x')},  // unknown, and long
    };
    for (const Case& message : refused) {
        const Reply reply = gateway.ask(message.kind, message.bytes);
        EXPECT_EQ(reply.kind, MessageKind::failed) << message.kind << " of " << message.bytes.size();
        EXPECT_NE(reply.bytes, "");
    }
    gateway.sendMessage('X', number(2) + "code");
    ASSERT_TRUE(unit.waitForRequest()) << "the connection is still in step";
    EXPECT_EQ(std::string_view(unit.block(), 4), "code");
    unit.reply();
    EXPECT_EQ(gateway.receive().bytes, "co");

    EXPECT_THAT(gateway.ask('O', std::string(5000, '{')).bytes, HasSubstr("unit's id is out of range"));
    EXPECT_EQ(gateway.ask('R', number(0) + number(4)).kind, MessageKind::failed)
        << "the former unit is closed";
}

TEST_F(GatewayConnection, hangsUpOnStrangers) {
    std::string wrong = token;
    wrong.back() = wrong.back() == '0' ? '1' : '0';
    // So often that a connection comes at every moment of the listener's round.
    for (int i = 0; i < 300; ++i)
        for (const std::string& greeting : {wrong + gatewayRole, wrong + commandRole, token + "?"}) {
            Gateway stranger(port), silent(port);
            stranger.write(greeting);
            ASSERT_TRUE(stranger.isHungUp()) << greeting << " of round " << i;
        }
    EXPECT_EQ(octave.execute(L"disp(1)"), L"1\n") << "the commands' connection is still Octave's";
}

// Whoever else is on the machine can connect, and say a byte now and then.
TEST_F(GatewayConnection, limitsAndDropsSlowStrangers) {
    Unit unit(2048);
    const DWORD server = serverOfThisProcess();
    const DWORD threadsBefore = ProcessUsage::of(server).threads;
    std::vector<Gateway> strangers;
    for (int i = 0; i < 200; ++i)
        strangers.emplace_back(port).write("0");
    Gateway gateway = connectGateway();
    EXPECT_EQ(gateway.ask('O', unitId).kind, MessageKind::done);
    EXPECT_EQ(octave.execute(L"disp(1)"), L"1\n");
    EXPECT_LE(ProcessUsage::of(server).threads, threadsBefore + 5);

    Gateway slow(port);
    const ULONGLONG start = GetTickCount64();
    while (GetTickCount64() - start < 12000 && slow.tryToWrite("0"))
        Sleep(1000);
    EXPECT_LT(GetTickCount64() - start, 12000u) << "may still greet";
}

TEST_F(GatewayConnection, releasesTheUnitWhenTheGatewayHangsUp) {
    {
        Unit unit(2048);
        Gateway gateway = connectGateway();
        ASSERT_EQ(gateway.ask('O', unitId).kind, MessageKind::done);
        gateway.sendMessage('X', number(4) + "slow");
        ASSERT_TRUE(unit.waitForRequest());
        gateway.hangUp();
        Sleep(50);
        unit.block()[0] = 'l';
        // The reply to nobody must not answer the next asker.
        Gateway next = connectGateway();
        Sleep(1000);
        unit.reply();
        ASSERT_EQ(next.ask('O', unitId).kind, MessageKind::done);
        next.sendMessage('X', number(4) + "next");
        ASSERT_TRUE(unit.waitForRequest());
        Sleep(200);
        std::copy_n("done", 4, unit.block());
        unit.reply();
        EXPECT_EQ(next.receive().bytes, "done");

        next.sendMessage('X', number(4) + "slow");
        ASSERT_TRUE(unit.waitForRequest());
    }
    EXPECT_TRUE(waitUntil([] { return !isUnitHeld(); })) << "still held for an asker that hung up";
}

} // namespace

} // namespace solvane::engine
