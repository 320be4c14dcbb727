// A heap whose every block ends at a page that cannot be touched, and whose freed blocks stay untouchable
// until long after: reading or writing beyond a block or after its release faults at the instruction that
// does it. Writes before a block, and into the few bytes between its end and the next multiple of 16, show
// when it is freed.
//
// The linker sends a module's malloc, calloc, realloc, free and _msize here (--wrap). Memory that system
// modules allocated, and what exceeds the limits below, is the C library's and goes back to it.
#include "Finding.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>

extern "C" {
void* __real_malloc(size_t size);
void* __real_realloc(void* block, size_t size);
void __real_free(void* block);
size_t __real__msize(void* block);
void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_realloc(void* block, size_t size);
void __wrap_free(void* block);
size_t __wrap__msize(void* block);
}

namespace {

constexpr size_t pageSize = 4096;
constexpr size_t arenaPages = 1 << 18; // 1 GiB of addresses
constexpr size_t alignment = 16;
constexpr unsigned char unwritten = 0xCD;
constexpr unsigned char border = 0xFE;
// Every block is two mappings of the system's, which allows a process 65530 in all.
constexpr size_t mostLiveBlocks = 9000;

struct Block {
    std::uint32_t pages; // without the guard after them; 0: no block starts here
    bool live;
    Block* nextFreed;
    size_t size;
};

struct Arena {
    unsigned char* memory;
    Block* blocks; // one for each page
    size_t usedPages;
};

SRWLOCK lock = SRWLOCK_INIT;
Arena arenas[16];
size_t arenaCount = 0;
size_t liveBlocks = 0;
// Freed blocks of one page, the oldest first: used again when all arenas are full.
Block* oldestFreed = nullptr;
Block* youngestFreed = nullptr;
void* faultHandler = nullptr;

size_t rounded(size_t size) {
    return (size + alignment - 1) / alignment * alignment;
}

Arena* arenaOf(const void* address) {
    const auto* byte = static_cast<const unsigned char*>(address);
    for (size_t i = 0; i < arenaCount; ++i)
        if (byte >= arenas[i].memory && byte < arenas[i].memory + arenaPages * pageSize)
            return &arenas[i];
    return nullptr;
}

Arena* arenaOf(const Block* block) {
    for (size_t i = 0; i < arenaCount; ++i)
        if (block >= arenas[i].blocks && block < arenas[i].blocks + arenaPages)
            return &arenas[i];
    return nullptr;
}

unsigned char* firstPage(const Block* block) {
    const Arena* arena = arenaOf(block);
    return arena->memory + static_cast<size_t>(block - arena->blocks) * pageSize;
}

unsigned char* start(const Block* block) {
    return firstPage(block) + block->pages * pageSize - rounded(block->size);
}

[[noreturn]] void report(const char* what, const Block* block, const CONTEXT* where = nullptr) {
    char text[200];
    std::snprintf(text, sizeof text, "%s a block of %llu bytes", what,
                  static_cast<unsigned long long>(block->size));
    reportFinding(text, where);
}

LONG CALLBACK reportFault(EXCEPTION_POINTERS* fault) {
    const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
    if (record.ExceptionCode != EXCEPTION_ACCESS_VIOLATION || record.NumberParameters < 2)
        return EXCEPTION_CONTINUE_SEARCH;
    const auto* address = reinterpret_cast<const unsigned char*>(record.ExceptionInformation[1]);
    const Arena* arena = arenaOf(address);
    if (!arena)
        return EXCEPTION_CONTINUE_SEARCH;
    const Block* block = arena->blocks + (address - arena->memory) / static_cast<ptrdiff_t>(pageSize);
    while (block > arena->blocks && !block->pages)
        --block;
    const bool write = record.ExceptionInformation[0] == 1;
    if (block->live)
        report(write ? "write past the end of" : "read past the end of", block, fault->ContextRecord);
    report(write ? "write after the release of" : "read after the release of", block, fault->ContextRecord);
}

bool addArena() {
    if (arenaCount == std::size(arenas))
        return false;
    Arena arena{};
    arena.memory =
        static_cast<unsigned char*>(VirtualAlloc(nullptr, arenaPages * pageSize, MEM_RESERVE, PAGE_NOACCESS));
    arena.blocks = static_cast<Block*>(
        VirtualAlloc(nullptr, arenaPages * sizeof(Block), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    if (!arena.memory || !arena.blocks)
        return false;
    arenas[arenaCount++] = arena;
    if (!faultHandler)
        faultHandler = AddVectoredExceptionHandler(1, reportFault);
    return true;
}

Block* freshBlock(size_t pages) {
    if (pages + 1 > arenaPages)
        return nullptr;
    if (!arenaCount || arenas[arenaCount - 1].usedPages + pages + 1 > arenaPages) {
        if (!addArena())
            return nullptr;
    }
    Arena& arena = arenas[arenaCount - 1];
    Block* block = arena.blocks + arena.usedPages;
    arena.usedPages += pages + 1;
    block->pages = static_cast<std::uint32_t>(pages);
    return block;
}

Block* freedBlock(size_t pages) {
    Block* block = pages == 1 ? oldestFreed : nullptr;
    if (block)
        oldestFreed = block->nextFreed;
    return block;
}

void* allocate(size_t size) {
    size = size ? size : 1;
    const size_t pages = (rounded(size) + pageSize - 1) / pageSize;
    if (liveBlocks >= mostLiveBlocks || pages >= arenaPages)
        return nullptr;
    Block* block = freshBlock(pages);
    if (!block)
        block = freedBlock(pages);
    if (!block || !VirtualAlloc(firstPage(block), pages * pageSize, MEM_COMMIT, PAGE_READWRITE))
        return nullptr;
    block->size = size;
    block->live = true;
    ++liveBlocks;
    std::memset(firstPage(block), border, pages * pageSize);
    std::memset(start(block), unwritten, size);
    return start(block);
}

// The live block that starts at the address, which lies in the arena.
Block* liveBlock(const Arena& arena, const void* address, const char* use) {
    const auto* byte = static_cast<const unsigned char*>(address);
    Block* block = arena.blocks + (byte - arena.memory) / static_cast<ptrdiff_t>(pageSize);
    char text[200];
    if (block->pages && !block->live) {
        std::snprintf(text, sizeof text, "second %s of", use);
        report(text, block);
    }
    if (!block->pages || byte != start(block)) {
        std::snprintf(text, sizeof text, "%s of an address that is no block's start", use);
        reportFinding(text);
    }
    return block;
}

void checkBorders(const Block* block) {
    for (const unsigned char* byte = firstPage(block); byte < start(block); ++byte)
        if (*byte != border)
            report("write before the start of", block);
    for (size_t i = block->size; i < rounded(block->size); ++i)
        if (start(block)[i] != border)
            report("write past the end of", block);
}

void release(Block* block) {
    checkBorders(block);
    VirtualFree(firstPage(block), block->pages * pageSize, MEM_DECOMMIT);
    block->live = false;
    --liveBlocks;
    if (block->pages != 1)
        return;
    block->nextFreed = nullptr;
    (oldestFreed ? youngestFreed->nextFreed : oldestFreed) = block;
    youngestFreed = block;
}

class Locked {
public:
    Locked() { AcquireSRWLockExclusive(&lock); }
    ~Locked() { ReleaseSRWLockExclusive(&lock); }
    Locked(const Locked&) = delete;
};

// A module that is unloaded takes its handler along.
struct HandlerEnd {
    ~HandlerEnd() {
        if (faultHandler)
            RemoveVectoredExceptionHandler(faultHandler);
    }
} handlerEnd;

} // namespace

void* __wrap_malloc(size_t size) {
    Locked locked;
    void* block = allocate(size);
    return block ? block : __real_malloc(size);
}

void* __wrap_calloc(size_t count, size_t size) {
    if (size && count > SIZE_MAX / size)
        return nullptr;
    void* block = __wrap_malloc(count * size);
    return block ? std::memset(block, 0, count * size) : nullptr;
}

size_t __wrap__msize(void* block) {
    Locked locked;
    const Arena* arena = arenaOf(block);
    return arena ? liveBlock(*arena, block, "size")->size : __real__msize(block);
}

void* __wrap_realloc(void* block, size_t size) {
    if (!block)
        return __wrap_malloc(size);
    if (!size) {
        __wrap_free(block);
        return nullptr;
    }
    {
        Locked locked;
        if (!arenaOf(block))
            return __real_realloc(block, size);
    }
    void* moved = __wrap_malloc(size);
    if (!moved)
        return nullptr;
    const size_t old = __wrap__msize(block);
    std::memcpy(moved, block, old < size ? old : size);
    __wrap_free(block);
    return moved;
}

void __wrap_free(void* block) {
    Locked locked;
    if (const Arena* arena = arenaOf(block))
        release(liveBlock(*arena, block, "release"));
    else
        __real_free(block);
}
