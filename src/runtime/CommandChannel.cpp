#include "CommandChannel.h"

#include "CommandTable.h"
#include "PaintMessages.h"
#include "channel/ChannelFrame.h"
#include "thermo/CalculationRun.h"
#include "unit/CSolvaneUnitOp.h"

#include <algorithm>

namespace solvane {

namespace {

/// How late a paint message may be served; not a time limit of the script.
constexpr DWORD paintInterval = 300;
/// A look for paint messages takes a third of a command's round trip, so commands that follow one another
/// closely share one.
constexpr DWORD paintPause = 30;

} // namespace

std::uint32_t blockSize(const CalculationRun& run) {
    const auto nComp = static_cast<std::uint32_t>(run.nComp);
    const auto nPhase = static_cast<std::uint32_t>(run.phaseNames.size());
    constexpr std::uint32_t phasesOf10 = 10;
    constexpr std::uint32_t phaseNamesOf10 = 1024;
    const std::uint32_t onePhase = 8 * nComp + 12;
    const std::uint32_t equilibrium =
        run.material10 ? onePhase * phasesOf10 + 8 + phaseNamesOf10 : onePhase * nPhase + 8;
    return std::max({8 * nComp * nComp + 8, std::uint32_t{2048}, 64 * nComp + 8, equilibrium});
}

bool CommandChannel::open(const CalculationRun& run, std::wstring& error) {
    size_ = blockSize(run);
    mapping_.reset(
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size_, run.unit.unitId.c_str()));
    if (!mapping_) {
        error = L"Failed to create shared memory mapping for inter-process communication";
        return false;
    }
    view_.reset(MapViewOfFile(mapping_.get(), FILE_MAP_ALL_ACCESS, 0, 0, size_));
    if (!view_) {
        error = L"Failed to map shared memory mapping for inter-process communication";
        return false;
    }
    return true;
}

std::span<std::byte> CommandChannel::block() const {
    return {static_cast<std::byte*>(view_.get()), size_};
}

void CommandChannel::serve(CalculationRun& run, std::wstring& error) {
    const HANDLE events[] = {run.unit.requestEvent.get(), run.unit.workerDoneEvent.get()};
    PaintMessages paintMessages;
    ULONGLONG pumped = 0;
    for (;;) {
        ULONGLONG now = GetTickCount64();
        if (now - pumped >= paintPause) {
            paintMessages.serve();
            now = pumped = GetTickCount64(); // after it, so that slow painting leaves time for commands
        }
        const DWORD untilNextLook = paintInterval - static_cast<DWORD>(now - pumped);
        switch (WaitForMultipleObjects(2, events, FALSE, untilNextLook)) {
        case WAIT_OBJECT_0:
            if (run.unit.terminationAsked) // the script is to end soon
                SetChannelError(block(), run.unit.startupError);
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
