#include "Transport.h"
#include "UnitClaim.h"
#include "channel/ChannelNames.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace solvane::gateway {

namespace {

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

struct ViewCloser {
    void operator()(char* view) const { UnmapViewOfFile(view); }
};
using View = std::unique_ptr<char, ViewCloser>;

/// How often a wait looks whether the unit is still there, in milliseconds.
constexpr DWORD unitCheckInterval = 1000;

class BlockTransport : public Transport {
public:
    bool open(const std::string& unitId, std::string& error);

    std::size_t capacity() const override { return size_; }
    bool exchange(std::string_view request, std::size_t wanted, std::string& reply,
                  std::string& error) override;
    bool read(std::size_t offset, std::size_t count, std::string& bytes, std::string& error) override;

private:
    bool openRequestEvent();

    UnitClaim claim_;
    std::string requestName_;
    Handle requestEvent_;
    Handle replyEvent_;
    Handle mapping_;
    View view_;
    std::size_t size_ = 0;
};

bool BlockTransport::open(const std::string& unitId, std::string& error) {
    requestName_ = requestEventName(unitId);
    mapping_.reset(OpenFileMappingA(FILE_MAP_READ | FILE_MAP_WRITE, FALSE, unitId.c_str()));
    if (mapping_)
        view_.reset(
            static_cast<char*>(MapViewOfFile(mapping_.get(), FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, 0)));
    replyEvent_.reset(OpenEventA(SYNCHRONIZE | EVENT_MODIFY_STATE, FALSE, replyEventName(unitId).c_str()));
    MEMORY_BASIC_INFORMATION region{};
    if (!view_ || !replyEvent_ || !openRequestEvent() || !VirtualQuery(view_.get(), &region, sizeof region)) {
        error = "no unit operation is calculating under the id " + unitId;
        return false;
    }
    size_ = region.RegionSize;
    if (!claim_.take(unitId, error))
        return false;
    // It may be set still, where the one who asked last did not live to see the answer.
    ResetEvent(replyEvent_.get());
    return true;
}

bool BlockTransport::openRequestEvent() {
    requestEvent_.reset(OpenEventA(EVENT_MODIFY_STATE, FALSE, requestName_.c_str()));
    return requestEvent_ != nullptr;
}

/// The unit may take as long as it likes: the host's thermodynamics can be slow, and there is nothing else
/// that the script could do. But if its process has died, no answer will ever come. An event lives as long as
/// anyone holds it, so we let go of the request event now and then and open it again: if that fails, only we
/// were holding it. While the unit lives, it keeps the event and its state.
bool BlockTransport::exchange(std::string_view request, std::size_t wanted, std::string& reply,
                              std::string& error) {
    const auto unitHasGone = [&error] {
        error = "the unit operation is no longer running";
        return false;
    };
    if (!requestEvent_)
        return unitHasGone();
    std::memcpy(view_.get(), request.data(), request.size());
    SetEvent(requestEvent_.get());
    for (DWORD result = WAIT_TIMEOUT; result != WAIT_OBJECT_0;) {
        result = WaitForSingleObject(replyEvent_.get(), unitCheckInterval);
        if (result == WAIT_FAILED)
            return unitHasGone();
        if (result == WAIT_TIMEOUT) {
            requestEvent_.reset();
            if (!openRequestEvent())
                return unitHasGone();
        }
    }
    reply.clear();
    return read(0, wanted, reply, error);
}

bool BlockTransport::read(std::size_t offset, std::size_t count, std::string& bytes, std::string&) {
    const std::size_t start = std::min(offset, size_);
    bytes.append(view_.get() + start, std::min(count, size_ - start));
    return true;
}

} // namespace

const bool staysLoaded = false; // a loaded file cannot be replaced

std::unique_ptr<Transport> openTransport(const std::string& unitId, std::string& error) {
    auto transport = std::make_unique<BlockTransport>();
    if (!transport->open(unitId, error))
        return nullptr;
    return transport;
}

} // namespace solvane::gateway
