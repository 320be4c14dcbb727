#include "RoundTrip.h"

#include "channel/ChannelFrame.h"
#include "channel/ChannelNames.h"

#include <cstdint>
#include <cstring>

namespace solvane {

RoundTrip::RoundTrip(const std::string& id)
    : mapping_(OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, id.c_str())),
      requestEvent_(OpenEventA(EVENT_MODIFY_STATE, FALSE, requestEventName(id).c_str())),
      replyEvent_(OpenEventA(SYNCHRONIZE, FALSE, replyEventName(id).c_str())) {
    if (mapping_ && requestEvent_ && replyEvent_)
        view_.reset(MapViewOfFile(mapping_.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
}

bool RoundTrip::ask(const std::string& request) {
    std::memcpy(view_.get(), request.data(), request.size());
    SetEvent(requestEvent_.get());
    WaitForSingleObject(replyEvent_.get(), INFINITE);
    std::uint32_t status = statusSuccess;
    std::memcpy(&status, view_.get(), sizeof status);
    return status == statusSuccess;
}

BareResponder::BareResponder() : id_("SolvaneBareResponder" + std::to_string(GetCurrentProcessId())) {
    constexpr DWORD size = 2048;
    mapping_.reset(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, id_.c_str()));
    view_.reset(MapViewOfFile(mapping_.get(), FILE_MAP_ALL_ACCESS, 0, 0, size));
    requestEvent_.reset(CreateEventA(nullptr, FALSE, FALSE, requestEventName(id_).c_str()));
    replyEvent_.reset(CreateEventA(nullptr, FALSE, FALSE, replyEventName(id_).c_str()));
    stopEvent_.reset(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    thread_.reset(CreateThread(nullptr, 0, respond, this, 0, nullptr));
}

BareResponder::~BareResponder() {
    SetEvent(stopEvent_.get());
    WaitForSingleObject(thread_.get(), INFINITE);
}

DWORD WINAPI BareResponder::respond(void* argument) {
    BareResponder& self = *static_cast<BareResponder*>(argument);
    const HANDLE events[] = {self.requestEvent_.get(), self.stopEvent_.get()};
    constexpr DWORD interval = 300;
    for (;;) {
        const DWORD signalled = WaitForMultipleObjects(2, events, FALSE, interval);
        if (signalled == WAIT_OBJECT_0 + 1)
            return 0;
        if (signalled != WAIT_OBJECT_0)
            continue;
        std::memset(self.view_.get(), 0, sizeof(std::uint32_t));
        SetEvent(self.replyEvent_.get());
    }
}

} // namespace solvane
