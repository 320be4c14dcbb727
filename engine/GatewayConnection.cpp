#include "GatewayConnection.h"

#include "WinePipes.h"
#include "channel/ChannelNames.h"
#include "channel/CommandCode.h"
#include "com/Failure.h"
#include "gateway/UnitClaim.h"

#include <algorithm>
#include <string>

namespace solvane::engine {

namespace {

// Longer than any name of a kernel object.
constexpr std::uint32_t longestUnitId = 260;
// A request begins with its command code.
constexpr std::uint32_t shortestRequest = sizeof(CommandCode);
// How often a long wait for the unit checks that the gateway is still connected, in milliseconds.
constexpr DWORD aliveCheckInterval = 500;

/// The block and the events of a unit that is in a run. Without a unit the block is empty.
struct UnitChannel {
    UnitClaim claim;
    MappedView view;
    std::span<std::byte> block;
    Handle requestEvent;
    Handle replyEvent;
};

bool openUnit(const std::string& unitId, UnitChannel& unit, std::string& error) {
    const Handle mapping(OpenFileMappingA(FILE_MAP_READ | FILE_MAP_WRITE, FALSE, unitId.c_str()));
    if (!mapping)
        return fail(error, "There is no run of the unit " + unitId);
    UnitChannel channel;
    channel.view.reset(MapViewOfFile(mapping.get(), FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, 0));
    MEMORY_BASIC_INFORMATION region{};
    if (!channel.view || VirtualQuery(channel.view.get(), &region, sizeof region) == 0)
        return fail(error, "Could not map the block of the unit " + unitId);
    channel.block = {static_cast<std::byte*>(channel.view.get()), region.RegionSize};

    constexpr DWORD access = SYNCHRONIZE | EVENT_MODIFY_STATE;
    channel.requestEvent.reset(OpenEventA(access, FALSE, requestEventName(unitId).c_str()));
    channel.replyEvent.reset(OpenEventA(access, FALSE, replyEventName(unitId).c_str()));
    if (!channel.requestEvent || !channel.replyEvent)
        return fail(error, "Could not open the events of the unit " + unitId);
    if (!channel.claim.take(unitId, error))
        return false;
    // Still set if the gateway that sent the last command ended before it received the reply.
    ResetEvent(channel.replyEvent.get());
    unit = std::move(channel);
    return true;
}

/// One gateway's requests. Each operation reads all `length` bytes of the message and answers; false once the
/// connection is closed.
class GatewayService {
public:
    explicit GatewayService(Connection& connection) : connection_(connection) {}

    bool serve(const MessageHeader& message) {
        switch (message.kind) {
        case MessageKind::open:
            return open(message.length);
        case MessageKind::exchange:
            return exchange(message.length);
        case MessageKind::read:
            return read(message.length);
        case MessageKind::close:
            return close(message.length);
        case MessageKind::pipes:
            return usePipes(message.length);
        default:
            return refuse(message.length, "Unknown kind of message");
        }
    }

private:
    bool isOpen() const { return !unit_.block.empty(); }

    bool open(std::uint32_t length) {
        unit_ = {};
        if (length == 0 || length > longestUnitId)
            return refuse(length, "The length of the unit's id is out of range");
        std::string unitId(length, '\0');
        if (!connection_.read(std::as_writable_bytes(std::span(unitId))))
            return false;
        std::string error;
        return openUnit(unitId, unit_, error) ? connection_.send(MessageKind::done, std::string_view())
                                              : connection_.send(MessageKind::failed, error);
    }

    bool exchange(std::uint32_t length) {
        std::uint32_t wanted = 0;
        if (!isOpen())
            return refuse(length, "No unit is open");
        if (length < sizeof wanted + shortestRequest || length - sizeof wanted > unit_.block.size())
            return refuse(length, "A request of " + std::to_string(length) +
                                      " bytes does not fit the unit's block of " +
                                      std::to_string(unit_.block.size()) + " bytes");
        if (!connection_.readValue(wanted) || !connection_.read(unit_.block.first(length - sizeof wanted)))
            return false;
        SetEvent(unit_.requestEvent.get());
        return waitForReply() &&
               connection_.send(MessageKind::done,
                                unit_.block.first(std::min<std::size_t>(wanted, unit_.block.size())));
    }

    /// False once the gateway has closed the connection: the unit may never reply.
    bool waitForReply() {
        DWORD outcome;
        do
            outcome = WaitForSingleObject(unit_.replyEvent.get(), aliveCheckInterval);
        while (outcome == WAIT_TIMEOUT && connection_.isAlive());
        return outcome == WAIT_OBJECT_0;
    }

    bool read(std::uint32_t length) {
        struct {
            std::uint32_t offset;
            std::uint32_t count;
        } range;
        if (!isOpen())
            return refuse(length, "No unit is open");
        if (length != sizeof range)
            return refuse(length, "A read needs an offset and a count");
        if (!connection_.readValue(range))
            return false;
        const std::size_t offset = std::min<std::size_t>(range.offset, unit_.block.size());
        const std::size_t count = std::min<std::size_t>(range.count, unit_.block.size() - offset);
        return connection_.send(MessageKind::done, unit_.block.subspan(offset, count));
    }

    bool close(std::uint32_t length) {
        unit_ = {};
        return connection_.skip(length) && connection_.send(MessageKind::done, std::string_view());
    }

    bool usePipes(std::uint32_t length) {
        struct {
            PipeEnd requests;
            PipeEnd answers;
        } ends;
        if (length != sizeof ends)
            return refuse(length, "Pipes are two ends");
        if (!connection_.readValue(ends))
            return false;
        FileHandle requests = openWinePipe(ends.requests, GENERIC_READ);
        FileHandle answers = openWinePipe(ends.answers, GENERIC_WRITE);
        if (!requests || !answers)
            return refuse(0, "The pipes could not be opened");
        if (!connection_.send(MessageKind::done, std::string_view()))
            return false;
        connection_.continueOn(std::move(requests), std::move(answers));
        return true;
    }

    bool refuse(std::uint32_t length, std::string_view reason) {
        return connection_.skip(length) && connection_.send(MessageKind::failed, reason);
    }

    Connection& connection_;
    UnitChannel unit_;
};

} // namespace

void serveGateway(Connection& connection) {
    GatewayService service(connection);
    MessageHeader message;
    while (connection.readHeader(message) && service.serve(message))
        ;
}

} // namespace solvane::engine
