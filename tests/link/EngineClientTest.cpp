#include "link/EngineClient.h"
#include "link/Pipes.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace solvane::engine {

namespace {

constexpr std::size_t farMoreThanASocketHolds = 8u << 20;

/// Both ends of a connection: the client's, and the server's as a socket.
class Link : public testing::Test {
protected:
    ~Link() override { close(ends[1]); }

    std::string read(std::size_t count) {
        std::string bytes(count, '\0');
        EXPECT_EQ(recv(ends[1], bytes.data(), count, MSG_WAITALL), static_cast<ssize_t>(count));
        return bytes;
    }
    void write(std::string_view bytes) {
        EXPECT_EQ(send(ends[1], bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    }

    static std::array<int, 2> connectedPair() {
        std::array<int, 2> pair{};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, pair.data()), 0);
        return pair;
    }

    const std::array<int, 2> ends = connectedPair();
    EngineClient client{ends[0]};
    MessageKind kind{};
    std::string body;
};

/// Sends the calling thread a signal every millisecond, which breaks each wait in the system off.
class Signals {
public:
    Signals() {
        struct sigaction action{};
        action.sa_handler = [](int) {};
        sigaction(SIGUSR1, &action, nullptr);
        thread_ = std::thread([this, receiver = pthread_self()] {
            for (; !isStopping_; usleep(1000))
                pthread_kill(receiver, SIGUSR1);
        });
    }
    ~Signals() {
        isStopping_ = true;
        thread_.join();
    }

private:
    std::atomic<bool> isStopping_ = false;
    std::thread thread_;
};

TEST_F(Link, messagesPassWholeWhateverSignalsCome) {
    const std::string text(farMoreThanASocketHolds, 'x');
    std::thread server([&] {
        usleep(20000); // the client waits for room
        const std::string message = read(1 + 4 + 3 + text.size());
        EXPECT_EQ(message.substr(0, 8), std::string("X\x03\x00\x80\x00uvw", 8));
        usleep(20000); // and for the answer
        std::thread([&] { write(std::string("D\x00\x00\x80\x00", 5) + text); }).join();
    });
    {
        Signals signals;
        EXPECT_TRUE(client.send(MessageKind::exchange, "uvw", text));
        EXPECT_TRUE(client.receive(kind, body));
    }
    server.join();
    EXPECT_EQ(kind, MessageKind::done);
    EXPECT_EQ(body, text);
}

TEST_F(Link, aMessageThatIsTooLongOrBreaksOffIsNone) {
    write(std::string("D\x01\x00\x00\x40", 5)); // a byte more than the longest
    EXPECT_FALSE(client.receive(kind, body));
    write(std::string("D\x00\x00\x00\x40half", 9));
    shutdown(ends[1], SHUT_RDWR);
    EXPECT_FALSE(client.receive(kind, body));
    EXPECT_FALSE(client.send(MessageKind::close, {}));
}

/// The server's end of a pipe of this process, as the message for it describes it.
int openPipe(const PipeEnd& end, int access) {
    const int pipe = open(
        ("/proc/" + std::to_string(end.process) + "/fd/" + std::to_string(end.descriptor)).c_str(), access);
    struct stat state{};
    EXPECT_EQ(fstat(pipe, &state), 0);
    EXPECT_EQ(state.st_ino, end.inode);
    return pipe;
}

TEST_F(Link, messagesPassThroughPipesOnceTheServerHasOpenedThem) {
    int requests = -1, answers = -1;
    std::thread server([&] {
        EXPECT_EQ(read(5), std::string("P\x20\0\0\0", 5));
        std::array<PipeEnd, 2> pipes;
        std::memcpy(pipes.data(), read(sizeof pipes).data(), sizeof pipes);
        requests = openPipe(pipes[0], O_RDONLY);
        answers = openPipe(pipes[1], O_WRONLY);
        write(std::string("D\0\0\0\0", 5));
    });
    EXPECT_TRUE(moveToPipes(client));
    server.join();
    EXPECT_TRUE(client.send(MessageKind::read, "range"));
    std::array<char, 10> request{};
    EXPECT_EQ(::read(requests, request.data(), request.size()), 10);
    EXPECT_EQ(std::string(request.data(), 10), std::string("R\5\0\0\0range", 10));
    EXPECT_EQ(::write(answers, "F\2\0\0\0no", 7), 7);
    EXPECT_TRUE(client.receive(kind, body));
    EXPECT_EQ(body, "no");

    close(answers);
    EXPECT_FALSE(client.receive(kind, body));
    close(requests);
    EXPECT_FALSE(client.send(MessageKind::close, {})); // without the signal that ends the process
}

TEST_F(Link, messagesStayOnTheConnectionIfTheServerCannotOpenPipes) {
    std::thread server([&] {
        read(5 + 2 * sizeof(PipeEnd));
        write(std::string("F\0\0\0\0D\4\0\0\0unit", 14));
    });
    EXPECT_TRUE(moveToPipes(client));
    server.join();
    EXPECT_TRUE(client.receive(kind, body));
    EXPECT_EQ(body, "unit");
    shutdown(ends[1], SHUT_RDWR);
    EXPECT_FALSE(moveToPipes(client));
}

TEST(EngineClient, greetsTheServerThatTheEnvironmentNames) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{
        .sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero{}};
    socklen_t size = sizeof address;
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), size), 0);
    ASSERT_EQ(listen(listener, 1), 0);
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    setenv(portVariable, std::to_string(ntohs(address.sin_port)).c_str(), true);
    const std::string token(tokenLength, 'a');
    std::string error;

    setenv(tokenVariable, token.substr(1).c_str(), true);
    EXPECT_FALSE(EngineClient().connect(gatewayRole, error));
    EXPECT_EQ(error, "this Octave was not started by a unit operation");

    setenv(tokenVariable, token.c_str(), true);
    EngineClient client;
    ASSERT_TRUE(client.connect(commandRole, error)) << error;
    const int accepted = accept(listener, nullptr, nullptr);
    std::string greeting(tokenLength + 1, '\0');
    recv(accepted, greeting.data(), greeting.size(), MSG_WAITALL);
    EXPECT_EQ(greeting, token + commandRole);
    close(accepted);
    close(listener);

    EXPECT_FALSE(EngineClient().connect(gatewayRole, error));
    EXPECT_EQ(error, "the automation server cannot be reached: Connection refused");
}

} // namespace

} // namespace solvane::engine
