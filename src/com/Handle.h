/// Owners of Windows handles: one template, one policy line per kind.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <utility>

namespace solvane {

/// Owns a handle. `Policy` defines its type, its empty value and how to close it.
template <class Policy>
class Unique {
public:
    using Type = typename Policy::Type;

    Unique() = default;
    explicit Unique(Type handle) : handle_(handle) {}
    Unique(Unique&& other) noexcept : handle_(other.release()) {}
    Unique& operator=(Unique&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Unique() { reset(); }

    Type get() const { return handle_; }
    explicit operator bool() const { return handle_ != Policy::empty(); }
    Type* put() {
        reset();
        return &handle_;
    }
    Type release() { return std::exchange(handle_, Policy::empty()); }
    void reset(Type handle = Policy::empty()) {
        const Type old = std::exchange(handle_, handle);
        if (old != Policy::empty())
            Policy::close(old);
    }

private:
    Type handle_ = Policy::empty();
};

// clang-format off
struct KernelHandlePolicy { using Type = HANDLE; static Type empty() { return nullptr; } static void close(Type h) { CloseHandle(h); } };
struct FileHandlePolicy   { using Type = HANDLE; static Type empty() { return INVALID_HANDLE_VALUE; } static void close(Type h) { CloseHandle(h); } };
struct FindHandlePolicy   { using Type = HANDLE; static Type empty() { return INVALID_HANDLE_VALUE; } static void close(Type h) { FindClose(h); } };
struct MappedViewPolicy   { using Type = void*;  static Type empty() { return nullptr; } static void close(Type v) { UnmapViewOfFile(v); } };
struct RegistryKeyPolicy  { using Type = HKEY;   static Type empty() { return nullptr; } static void close(Type k) { RegCloseKey(k); } };
struct TaskTextPolicy     { using Type = LPOLESTR; static Type empty() { return nullptr; } static void close(Type t) { CoTaskMemFree(t); } };
// clang-format on

using Handle = Unique<KernelHandlePolicy>; ///< events, mutexes, threads, processes, mappings
using FileHandle = Unique<FileHandlePolicy>;
using FindHandle = Unique<FindHandlePolicy>;
using MappedView = Unique<MappedViewPolicy>;
using RegistryKey = Unique<RegistryKeyPolicy>;
using TaskText = Unique<TaskTextPolicy>; ///< a text that the system allocated for its caller

/// A critical section with a lifetime; usable with std::lock_guard.
class CriticalSection {
public:
    CriticalSection() { InitializeCriticalSection(&section_); }
    ~CriticalSection() { DeleteCriticalSection(&section_); }
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;
    void lock() { EnterCriticalSection(&section_); }
    void unlock() { LeaveCriticalSection(&section_); }

private:
    CRITICAL_SECTION section_;
};

/// Waits for a mutex and holds it. Where the wait times out, the mutex stays with its owner.
class MutexHold {
public:
    explicit MutexHold(HANDLE mutex, DWORD patience = INFINITE) : mutex_(mutex) {
        WaitForSingleObject(mutex_, patience);
    }
    ~MutexHold() { ReleaseMutex(mutex_); }
    MutexHold(const MutexHold&) = delete;
    MutexHold& operator=(const MutexHold&) = delete;

private:
    HANDLE mutex_;
};

} // namespace solvane
