#include "ProcessUsage.h"

#include "com/Handle.h"

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace solvane {

namespace {

struct GdiEntry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type; ///< 0: free
    std::uint8_t flags;
    std::uint64_t user;
};

/// A pointer in one of the system's blocks; the lower half of one in a 64-bit block.
std::uintptr_t pointerAt(std::uintptr_t block, std::size_t offset) {
    return *reinterpret_cast<const std::uintptr_t*>(block + offset);
}

/// The environment block of this thread.
std::uintptr_t threadBlock() {
    struct {
        std::uintptr_t exitStatus;
        std::uintptr_t block;
        std::uintptr_t ids[2];
        std::uintptr_t affinity;
        LONG priority;
        LONG basePriority;
    } thread{};
    NtQueryInformationThread(GetCurrentThread(), THREADINFOCLASS{}, &thread, sizeof thread, nullptr);
    return thread.block;
}

/// Null in a process that has not drawn yet. It is found by the thread's environment block and the process's.
const GdiEntry* gdiTable() {
    constexpr std::size_t processIn64 = 0x60, tableIn64 = 0xF8, processIn32 = 0x30, tableIn32 = 0x94;
    constexpr std::size_t wideThreadIn32 = 0xF70;
    std::uintptr_t thread = threadBlock();
    bool isWide = sizeof(void*) == 8;
    if (!isWide && pointerAt(thread, wideThreadIn32) != 0) {
        // On a 64-bit system there are blocks of both kinds, and the table stands in the 64-bit one.
        thread = pointerAt(thread, wideThreadIn32);
        isWide = true;
    }
    const std::uintptr_t process = pointerAt(thread, isWide ? processIn64 : processIn32);
    return reinterpret_cast<const GdiEntry*>(pointerAt(process, isWide ? tableIn64 : tableIn32));
}

/// GetGuiResources is no help either, so the process's table is counted itself.
DWORD countGdiObjects() {
    constexpr std::size_t size = 0x4000;
    const GdiEntry* table = gdiTable();
    if (!table)
        return 0;
    return static_cast<DWORD>(
        std::count_if(table, table + size, [](const GdiEntry& entry) { return entry.type != 0; }));
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
    usage.peak = counters.PeakWorkingSetSize;
    return usage;
}

} // namespace solvane
