// Stands in for the automation server: EngineStandIn OCTAVE FOLDER SCRIPT runs the script in Octave, with
// FOLDER on its path, and answers its gateway. Ends as Octave ends.
//
// Its unit is told by the script what to answer, and tells it what it was asked:
//   logMessage('no reply')     forgets the bytes with which each further command is answered
//   logMessage('reply:<hex>')  adds to them
//   logMessage('hang up')      breaks the connection instead of answering
//   getUnitName()              answers with the former command's request in hex, and the number of messages
//                              that it took and of bytes that were sent in answer
#include "../../engine/EngineProtocol.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

namespace {

using namespace solvane::engine;

constexpr char token[] = "0123456789abcdef0123456789abcdef";
constexpr std::size_t blockSize = 4096;

enum Code : std::uint32_t { getUnitName = 12, logMessage = 18 };

bool receive(int connection, void* bytes, std::size_t count) {
    return count == 0 || recv(connection, bytes, count, MSG_WAITALL) == static_cast<ssize_t>(count);
}

void put(std::string& block, std::size_t offset, const std::string& bytes) {
    block.replace(offset, bytes.size(), bytes);
}

std::string toHex(const std::string& bytes) {
    std::string hex;
    char digits[3];
    for (const char byte : bytes) {
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(byte));
        hex += digits;
    }
    return hex;
}

std::string fromHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

class Unit {
public:
    /// The answer to one message; false to hang up.
    bool answer(char kind, const std::string& body, char& answerKind, std::string& answer) {
        std::uint32_t numbers[2] = {};
        std::memcpy(numbers, body.data(), std::min(body.size(), sizeof numbers));
        answerKind = static_cast<char>(MessageKind::done);
        switch (static_cast<MessageKind>(kind)) {
        case MessageKind::open:
            if (body != "{unit}") {
                answerKind = static_cast<char>(MessageKind::failed);
                answer = "There is no run of the unit " + body;
            }
            return true;
        case MessageKind::exchange:
            if (!serve(body.substr(4)))
                return false;
            answer = block_.substr(0, numbers[0]);
            messages_ = 1;
            sent_ = answer.size();
            return true;
        case MessageKind::read:
            answer = numbers[0] < blockSize ? block_.substr(numbers[0], numbers[1]) : "";
            ++messages_;
            sent_ += answer.size();
            return true;
        case MessageKind::close:
            return true;
        default:
            return false;
        }
    }

private:
    bool serve(const std::string& request) {
        std::uint32_t code = 0;
        std::memcpy(&code, request.data(), sizeof code);
        const std::string text = code == logMessage ? request.substr(4, request.size() - 5) : "";
        block_.assign(blockSize, '\xcc');
        if (code == getUnitName) {
            put(block_, 0, std::string(4, '\0'));
            put(block_, 4,
                request_ + " " + std::to_string(messages_) + " " + std::to_string(sent_) +
                    std::string(1, '\0'));
            return true;
        }
        if (text == "hang up")
            return false;
        if (text == "no reply" || text.starts_with("reply:")) {
            reply_ = text == "no reply" ? "" : reply_ + fromHex(text.substr(6));
            put(block_, 0, std::string(4, '\0'));
            return true;
        }
        request_ = toHex(request);
        put(block_, 0, request);
        put(block_, 0, reply_);
        return true;
    }

    std::string block_;
    std::string reply_;
    std::string request_;
    std::size_t messages_ = 0;
    std::size_t sent_ = 0;
};

void serveConnection(int connection) {
    char greeting[tokenLength + 1];
    Unit unit;
    char kind = 0;
    std::uint32_t length = 0;
    bool ok = receive(connection, greeting, sizeof greeting) &&
              std::memcmp(greeting, token, tokenLength) == 0 && greeting[tokenLength] == gatewayRole;
    while (ok && receive(connection, &kind, 1) && receive(connection, &length, sizeof length)) {
        std::string body(length, '\0');
        std::string answer;
        char answerKind = 0;
        ok = receive(connection, body.data(), length) && unit.answer(kind, body, answerKind, answer);
        if (!ok)
            break;
        length = static_cast<std::uint32_t>(answer.size());
        const std::string message = std::string(1, answerKind) +
                                    std::string(reinterpret_cast<char*>(&length), sizeof length) + answer;
        ok = send(connection, message.data(), message.size(), MSG_NOSIGNAL) ==
             static_cast<ssize_t>(message.size());
    }
    close(connection);
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    if (argumentCount != 4)
        return 2;
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const name = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener, name, size) != 0 || listen(listener, 4) != 0 ||
        getsockname(listener, name, &size) != 0)
        return 2;
    setenv(portVariable, std::to_string(ntohs(address.sin_port)).c_str(), 1);
    setenv(tokenVariable, token, 1);

    const pid_t octave = fork();
    if (octave == 0) {
        execlp(arguments[1], arguments[1], "--no-init-file", "--no-site-file", "--no-history", "--quiet",
               "--path", arguments[2], arguments[3], nullptr);
        _exit(127);
    }
    std::thread([listener] {
        for (int connection = 0; (connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;)
            serveConnection(connection);
    }).detach();
    int status = 0;
    waitpid(octave, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 3;
}
