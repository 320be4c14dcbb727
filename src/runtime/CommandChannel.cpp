#include "CommandChannel.h"

#include "CommandTable.h"
#include "PaintMessages.h"
#include "channel/BlockSize.h"
#include "channel/ChannelFrame.h"
#include "channel/StopEvent.h"
#include "com/Failure.h"
#include "thermo/CalculationRun.h"
#include "unit/model/Unit.h"

namespace solvane {

namespace {

/// The longest delay of a paint message; not a time limit of the script.
constexpr DWORD paintInterval = 300;
/// Checking for paint messages takes a third of a command's round trip, so commands in quick succession share
/// one check, also for the host's stop request.
constexpr DWORD paintPause = 30;

bool isSet(const Handle& event) {
    return event && WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0;
}

} // namespace

std::uint32_t blockSize(const CalculationRun& run) {
    const auto phases = run.material10 ? std::nullopt : std::optional<std::uint64_t>(run.phaseNames.size());
    return static_cast<std::uint32_t>(blockSizeFor(run.nComp, phases));
}

bool CommandChannel::open(const CalculationRun& run, std::wstring& error) {
    size_ = blockSize(run);
    mapping_.reset(
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size_, run.unit.unitId.c_str()));
    if (!mapping_)
        return fail(error, L"Failed to create shared memory mapping for inter-process communication");
    view_.reset(MapViewOfFile(mapping_.get(), FILE_MAP_ALL_ACCESS, 0, 0, size_));
    if (!view_)
        return fail(error, L"Failed to map shared memory mapping for inter-process communication");
    return true;
}

std::span<std::byte> CommandChannel::block() const {
    return {static_cast<std::byte*>(view_.get()), size_};
}

void CommandChannel::serve(CalculationRun& run, std::wstring& error) {
    const HANDLE events[] = {run.unit.requestEvent.get(), run.unit.workerDoneEvent.get()};
    // Null in most hosts.
    const Handle stopEvent(OpenEventW(SYNCHRONIZE, FALSE, stopEventName(GetCurrentProcessId()).c_str()));
    bool isStopped = false;
    PaintMessages paintMessages;
    ULONGLONG pumped = 0;
    for (;;) {
        ULONGLONG now = GetTickCount64();
        if (now - pumped >= paintPause) {
            paintMessages.serve();
            isStopped = isStopped || isSet(stopEvent);
            now = pumped = GetTickCount64(); // after painting, so that slow painting leaves time for commands
        }
        const DWORD untilNextLook = paintInterval - static_cast<DWORD>(now - pumped);
        switch (WaitForMultipleObjects(2, events, FALSE, untilNextLook)) {
        case WAIT_OBJECT_0:
            // An error makes the script end soon, and has its line.
            if (run.unit.terminationAsked)
                SetChannelError(block(), run.unit.startupError);
            else if (isStopped)
                SetChannelError(block(), runStopped);
            else
                carryOutCommand(run, block());
            SetEvent(run.unit.replyEvent.get());
            break;
        case WAIT_OBJECT_0 + 1:
            return;
        case WAIT_ABANDONED_0 + 1:
            error = L"Failed to wait for Matlab: wait abandoned";
            return;
        default:
            break;
        }
    }
}

} // namespace solvane
