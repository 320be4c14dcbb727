// Any bytes of an automation server: messages that lie in them, and no more memory than they take.
#include "Check.h"
#include "link/EngineClient.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>

using namespace solvane::engine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::array<int, 2> ends{};
    check(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) == 0);
    EngineClient client(ends[0]);
    check(send(ends[1], data, size, 0) == static_cast<ssize_t>(size));
    shutdown(ends[1], SHUT_WR);
    std::size_t read = 0;
    MessageKind kind{};
    for (std::string body; client.receive(kind, body);) {
        constexpr std::size_t header = 5;
        check(body.compare(0, body.size(), reinterpret_cast<const char*>(data) + read + header,
                           body.size()) == 0);
        read += header + body.size();
    }
    check(read <= size);
    close(ends[1]);
    return 0;
}
