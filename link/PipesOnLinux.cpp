#include "Pipes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace solvane::engine {

namespace {

/// One end, which programs that this process starts do not inherit.
class End {
public:
    End() = default;
    explicit End(int descriptor) : descriptor_(descriptor) {}
    End(End&& other) noexcept : descriptor_(other.release()) {}
    End& operator=(End&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~End() {
        if (descriptor_ >= 0)
            close(descriptor_);
    }

    int get() const { return descriptor_; }
    int release() { return std::exchange(descriptor_, -1); }

private:
    int descriptor_ = -1;
};

bool makePipe(End& reading, End& writing) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    reading = End(ends[0]);
    writing = End(ends[1]);
    return true;
}

PipeEnd placeOf(const End& end) {
    struct stat state{};
    fstat(end.get(), &state);
    return {static_cast<std::uint32_t>(getpid()), static_cast<std::uint32_t>(end.get()), state.st_ino};
}

} // namespace

bool moveToPipes(EngineClient& client) {
    End request, serversRequest, reply, serversReply;
    if (!makePipe(serversRequest, request) || !makePipe(reply, serversReply))
        return true;
    const std::array ends = {placeOf(serversRequest), placeOf(serversReply)};
    MessageKind answer{};
    std::string body;
    if (!client.send(MessageKind::pipes, {reinterpret_cast<const char*>(ends.data()), sizeof ends}) ||
        !client.receive(answer, body))
        return false;
    if (answer == MessageKind::done)
        client.continueOn(reply.release(), request.release());
    return true;
}

} // namespace solvane::engine
