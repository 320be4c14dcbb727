#include "ProcessUsage.h"

#include "com/Handle.h"

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace solvane {

namespace {

/// GetGuiResources is no help either, so the process's table is counted itself.
DWORD countGdiObjects() {
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type; ///< 0: free
        std::uint8_t flags;
        std::uint64_t user;
    };
    constexpr std::size_t tablePlace = sizeof(void*) == 8 ? 0xF8 : 0x94; // in the process environment block
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process,
                              nullptr);
    const auto* block = reinterpret_cast<const std::byte*>(process.PebBaseAddress);
    const Entry* table = *reinterpret_cast<const Entry* const*>(block + tablePlace);
    return static_cast<DWORD>(
        std::count_if(table, table + 0x4000, [](const Entry& entry) { return entry.type != 0; }));
}

} // namespace

ProcessUsage ProcessUsage::now() {
    ProcessUsage usage = of(GetCurrentProcessId());
    usage.gdiObjects = countGdiObjects();
    return usage;
}

ProcessUsage ProcessUsage::of(DWORD processId) {
    ProcessUsage usage;
    // GetProcessHandleCount is no help: Wine's always says 0.
    std::vector<std::byte> list(1U << 20);
    NtQuerySystemInformation(SystemProcessInformation, list.data(), static_cast<ULONG>(list.size()), nullptr);
    for (std::size_t place = 0;;) {
        const auto* process = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(&list[place]);
        if (reinterpret_cast<ULONG_PTR>(process->UniqueProcessId) == processId) {
            usage.handles = process->HandleCount;
            usage.threads = process->NumberOfThreads;
        }
        if (process->NextEntryOffset == 0)
            break;
        place += process->NextEntryOffset;
    }
    const Handle process(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId));
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(process.get(), &counters, sizeof counters);
    usage.memory = counters.PagefileUsage;
    return usage;
}

} // namespace solvane
