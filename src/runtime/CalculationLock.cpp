#include "CalculationLock.h"

#include "com/Handle.h"

#include <objbase.h>

#include <atomic>

namespace solvane {

namespace {

/// Signalled while no thread holds the lock.
const Handle calculationLock(CreateEventW(nullptr, FALSE, TRUE, nullptr));
// Atomic, since a thread compares it with its own id without holding the lock.
std::atomic<DWORD> calculationLockOwner{0};

/// Serves incoming COM calls meanwhile: the run that holds the lock may use materials of this thread.
void waitForLock() {
    HANDLE lock = calculationLock.get();
    DWORD index = 0;
    if (FAILED(CoWaitForMultipleHandles(0, INFINITE, 1, &lock, &index)))
        WaitForSingleObject(lock, INFINITE); // a thread without an apartment
}

} // namespace

CalculationLock::CalculationLock() : tookIt_(calculationLockOwner != GetCurrentThreadId()) {
    if (!tookIt_)
        return;
    waitForLock();
    calculationLockOwner = GetCurrentThreadId();
}

CalculationLock::~CalculationLock() {
    if (!tookIt_)
        return;
    calculationLockOwner = 0;
    SetEvent(calculationLock.get());
}

} // namespace solvane
