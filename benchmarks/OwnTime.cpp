#include "OwnTime.h"

#include "BareUnit.h"
#include "CommandRequests.h"
#include "StubHost.h"
#include "Verdict.h"
#include "channel/ChannelFrame.h"
#include "com/Object.h"
#include "runtime/CommandChannel.h"
#include "runtime/CommandTable.h"
#include "thermo/CalculationMaterial.h"
#include "thermo/CalculationRun.h"

#include <x86intrin.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <span>

namespace solvane {

namespace {

constexpr int turns = 25;
constexpr int callsInTurn = 400;

/// A unit in the middle of a run.
struct Rig {
    explicit Rig(std::size_t compounds, int otherParameters = 0) {
        const ComRef<IDispatch> material = createStubMaterial(compounds);
        unit->feedPorts.push_back(unit->CreatePort(true, L"Feed"));
        unit->feedPorts.back()->Connect(material.get());
        unit->productPorts.push_back(unit->CreatePort(false, L"Product"));
        unit->productPorts.back()->Connect(material.get());
        for (int i = 0; i < otherParameters; ++i)
            unit->parameters.push_back(
                unit->CreateParameter(ParameterKind::real, true, L"p" + std::to_wstring(i)));
        unit->parameters.push_back(unit->CreateParameter(ParameterKind::real, true, L"Duty"));
    }
    bool prepare() {
        std::wstring error;
        return createCalculationMaterial(run, error) && readCompoundsAndPhases(run, error);
    }

    ComRef<BareUnit> unit = BareUnit::create();
    CalculationRun run{*unit.get()};
};

double measureTicksPerMicrosecond() {
    const std::uint64_t begin = __rdtsc();
    const double elapsed = microseconds([] { Sleep(50); });
    return static_cast<double>(__rdtsc() - begin) / elapsed;
}

/// The calls of one turn, in ticks of the processor.
template <class Call>
std::uint64_t ticksOfTurn(Call call) {
    const std::uint64_t begin = __rdtsc();
    for (int i = 0; i < callsInTurn; ++i)
        call();
    return __rdtsc() - begin;
}

/// Commands whose time is the system's, for a file of the script.
bool usesFile(const CommandRequest& command) {
    return command.name == "setReport";
}

bool compare(Rig& rig, const CommandRequest& command, const std::string& of, double ticksPerMicrosecond) {
    constexpr double goalAlone = 2, goalWithHost = 5; // microseconds
    std::string block(blockSize(rig.run), '\0');
    const auto carryOut = [&] {
        std::memcpy(block.data(), command.bytes.data(), command.bytes.size());
        carryOutCommand(rig.run, std::as_writable_bytes(std::span(block)));
    };
    carryOut();
    const std::string what = command.name + ", " + of;
    std::uint32_t status = statusFailure;
    std::memcpy(&status, block.data(), sizeof status);
    if (status != statusSuccess) {
        std::printf("  %s fails: %s\n", what.c_str(), block.data() + sizeof status);
        return printTimeAtMost(what, {}, goalAlone);
    }
    const std::size_t used = block.find_last_not_of('\0') + 1;
    std::string copy(used, '\0');

    std::vector<double> own, copies;
    for (int turn = 0; turn < turns; ++turn) {
        stubHostTicks = 0;
        const std::uint64_t all = ticksOfTurn(carryOut);
        own.push_back(static_cast<double>(all - stubHostTicks) / ticksPerMicrosecond / callsInTurn);
        const std::uint64_t bare = ticksOfTurn([&] {
            std::memcpy(block.data(), command.bytes.data(), command.bytes.size());
            std::memcpy(copy.data(), block.data(), used);
            asm volatile("" : : "r"(copy.data()) : "memory"); // the copies are not left out
        });
        copies.push_back(static_cast<double>(bare) / ticksPerMicrosecond / callsInTurn);
    }
    return printTimeAtMost("own time of " + what + " / a copy of its bytes", {own, copies},
                           stubHostTicks > 0 ? goalWithHost : goalAlone);
}

} // namespace

bool compareOwnTimes() {
    const double ticksPerMicrosecond = measureTicksPerMicrosecond();
    bool isMet = true;
    for (const std::size_t compounds : {5, 200}) {
        Rig rig(compounds);
        if (!rig.prepare()) {
            std::printf("  no run with %zu compounds\n", compounds);
            return false;
        }
        for (const CommandRequest& command : commandRequests(compounds))
            if (!usesFile(command))
                isMet &= compare(rig, command, std::to_string(compounds) + " compounds", ticksPerMicrosecond);
    }
    const std::vector<CommandRequest> commands = commandRequests();
    const auto getParameter = std::ranges::find(commands, "getParameter", &CommandRequest::name);
    Rig rig(1, 9999);
    return rig.prepare() && compare(rig, *getParameter, "the last of 10000", ticksPerMicrosecond) && isMet;
}

} // namespace solvane
