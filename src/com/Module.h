#pragma once

#include "Handle.h"

#include <string>

namespace solvane {

/// What the objects and class factories of one module share: its instance handle, the count of what keeps it
/// loaded, and the lock that guards the lazy creation of class factories. One object per module, from load.
class ComModule {
public:
    ComModule() { current_ = this; }
    ComModule(const ComModule&) = delete;
    ComModule& operator=(const ComModule&) = delete;

    static ComModule& current() { return *current_; }

    void lock() { InterlockedIncrement(&lockCount_); }
    void unlock() { InterlockedDecrement(&lockCount_); }
    LONG lockCount() const { return lockCount_; }

    CriticalSection& factoryLock() { return factoryLock_; }

    HINSTANCE instance = nullptr;
    /// The module's file with its path.
    std::wstring path() const;
    /// The path of a file in the module's folder.
    std::wstring pathBeside(const wchar_t* fileName) const;
    /// The module's own file version as "major.minor.build.revision", or "<unknown>".
    std::wstring version() const;

private:
    inline static ComModule* current_ = nullptr;
    volatile LONG lockCount_ = 0;
    CriticalSection factoryLock_;
};

/// Keeps the module loaded for its own lifetime.
class ModuleLock {
public:
    ModuleLock() { ComModule::current().lock(); }
    ~ModuleLock() { ComModule::current().unlock(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

} // namespace solvane
