#include "UnitSide.h"

#include "channel/ChannelNames.h"

#include <array>
#include <cstring>
#include <utility>

namespace {

std::string newId() {
    static int count = 0;
    return "{gateway-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count) + "}";
}

} // namespace

UnitSide::UnitSide(std::size_t blockSize)
    : id_(newId()),
      blockSize_(blockSize),
      mapping_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                  static_cast<DWORD>(blockSize), id_.c_str())),
      block_(static_cast<char*>(MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, 0))),
      requestEvent_(CreateEventA(nullptr, FALSE, FALSE, solvane::requestEventName(id_).c_str())),
      // Set, as a command that nobody waited for leaves it.
      replyEvent_(CreateEventA(nullptr, FALSE, TRUE, solvane::replyEventName(id_).c_str())),
      stopEvent_(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {
    answer(solvane::succeeded());
    thread_ = std::thread(&UnitSide::serve, this);
}

UnitSide::~UnitSide() {
    die();
}

void UnitSide::answer(const solvane::Wire& reply, DWORD delay) {
    answer_ = reply.bytes();
    delay_ = delay;
    std::memset(block_, untouched, blockSize_);
}

std::string UnitSide::takeRequest() {
    return std::exchange(request_, {});
}

void UnitSide::die() {
    if (!thread_.joinable())
        return;
    SetEvent(stopEvent_);
    thread_.join();
    UnmapViewOfFile(block_);
    for (HANDLE handle : {mapping_, requestEvent_, replyEvent_, stopEvent_})
        CloseHandle(handle);
}

void UnitSide::serve() {
    const std::array<HANDLE, 2> events{requestEvent_, stopEvent_};
    while (WaitForMultipleObjects(2, events.data(), FALSE, INFINITE) == WAIT_OBJECT_0) {
        request_.assign(block_, blockSize_);
        request_.erase(request_.find_last_not_of(untouched) + 1);
        if (WaitForSingleObject(stopEvent_, delay_) == WAIT_OBJECT_0)
            return;
        std::memcpy(block_, answer_.data(), answer_.size());
        SetEvent(replyEvent_);
    }
}
