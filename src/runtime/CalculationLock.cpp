#include "CalculationLock.h"

#include "com/Handle.h"

#include <objbase.h>

#include <mutex>

namespace solvane {

namespace {

/// A chain of COM calls: the thread that began it, or another one that serves a call of it.
struct Caller {
    DWORD thread = 0;
    GUID chain{}; ///< the same for all threads of the chain; zeros if COM does not know it

    static Caller current() {
        Caller caller{.thread = GetCurrentThreadId()};
        if (FAILED(CoGetCurrentLogicalThreadId(&caller.chain)))
            caller.chain = {};
        return caller;
    }
    bool isInChainOf(const Caller& other) const {
        return thread == other.thread || (chain == other.chain && chain != GUID{});
    }
};

/// Signalled while no run holds the lock.
const Handle calculationLock(CreateEventW(nullptr, FALSE, TRUE, nullptr));
// Guarded, since a caller compares itself with the owner without holding the lock.
CriticalSection ownerGuard;
Caller calculationLockOwner; // no thread has the id 0

void setOwner(const Caller& owner) {
    const std::lock_guard guard(ownerGuard);
    calculationLockOwner = owner;
}

bool ownsLock(const Caller& caller) {
    const std::lock_guard guard(ownerGuard);
    return caller.isInChainOf(calculationLockOwner);
}

/// Serves incoming COM calls meanwhile: the run that holds the lock may use materials of this thread.
void waitForLock() {
    HANDLE lock = calculationLock.get();
    DWORD index = 0;
    if (FAILED(CoWaitForMultipleHandles(0, INFINITE, 1, &lock, &index)))
        WaitForSingleObject(lock, INFINITE); // a thread without an apartment
}

} // namespace

CalculationLock::CalculationLock() {
    const Caller caller = Caller::current();
    tookIt_ = !ownsLock(caller);
    if (!tookIt_)
        return;
    waitForLock();
    setOwner(caller);
}

CalculationLock::~CalculationLock() {
    if (!tookIt_)
        return;
    setOwner({});
    SetEvent(calculationLock.get());
}

} // namespace solvane
