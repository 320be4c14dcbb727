// Very many unknown callers connect to the engine's socket, send a byte now and then, and connect again when
// they are hung up on: the engine still serves its clients, and stays small.

#include "EngineSocket.h"
#include "Folders.h"
#include "ProcessUsage.h"
#include "Processes.h"
#include "Progress.h"
#include "Segments.h"

#include <algorithm>
#include <chrono>

namespace solvane::soak {

namespace {

using engine::AutomationClient;
using engine::MessageKind;

constexpr int strangerCount = 1500;

/// Whether a gateway reaches its unit, and a client Octave.
bool isServed(const EngineAddress& address, AutomationClient& octave) {
    Caller gateway(address.port);
    gateway.write(address.token + engine::gatewayRole + message('O', sizeof unitId - 1, unitId));
    const auto reply = gateway.reply();
    return reply && reply->first == MessageKind::done && octave.execute(L"disp(1)") == L"1\n";
}

} // namespace

void soakStrangers(const Effort& effort, const Figures& figures) {
    using Clock = std::chrono::steady_clock;
    const TemporaryFolder temporary;
    AutomationClient octave;
    const AnsweringUnit unit;
    const EngineAddress address(octave);
    const DWORD server = engineServersOf(GetCurrentProcessId()).at(0);
    const ProcessUsage before = ProcessUsage::of(server);
    ProcessUsage most = before;
    std::vector<Caller> strangers;
    for (int i = 0; i < strangerCount; ++i)
        strangers.emplace_back(address.port);

    const int rounds = effort.of(20, 1000);
    Progress progress("rounds of slow strangers", rounds);
    int unserved = 0;
    auto longest = Clock::duration::zero();
    for (int round = 0; round < rounds; ++round) {
        for (Caller& stranger : strangers)
            if (!stranger.write("0"))
                stranger = Caller(address.port);
        const auto asked = Clock::now();
        unserved += isServed(address, octave) ? 0 : 1;
        longest = std::max(longest, Clock::now() - asked);
        const ProcessUsage now = ProcessUsage::of(server);
        most.threads = std::max(most.threads, now.threads);
        most.handles = std::max(most.handles, now.handles);
        most.memory = std::max(most.memory, now.memory);
        progress.at(round + 1);
    }
    figures.put("slow strangers at once", strangerCount);
    figures.put("clients not served", unserved);
    figures.put("longest service", std::chrono::duration<double>(longest).count());
    figures.put("engine: most handles gained", double(most.handles) - double(before.handles));
    figures.put("engine: most threads gained", double(most.threads) - double(before.threads));
    figures.put("engine: most memory gained", (double(most.memory) - double(before.memory)) / 1024);
}

} // namespace solvane::soak
