#include "CalculationLock.h"

#include "com/Handle.h"

#include <atomic>

namespace solvane {

namespace {

CriticalSection calculationLock;
// Atomic, since a thread compares it with its own id without holding the lock.
std::atomic<DWORD> calculationLockOwner{0};

} // namespace

CalculationLock::CalculationLock() : tookIt_(calculationLockOwner != GetCurrentThreadId()) {
    if (!tookIt_)
        return;
    calculationLock.lock();
    calculationLockOwner = GetCurrentThreadId();
}

CalculationLock::~CalculationLock() {
    if (!tookIt_)
        return;
    calculationLockOwner = 0;
    calculationLock.unlock();
}

} // namespace solvane
