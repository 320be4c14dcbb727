#include "MatlabTurn.h"

#include "com/Failure.h"

#include <atomic>

namespace solvane {

namespace {

constexpr wchar_t mutexName[] = L"SolvaneUnitOperationSharedMatlabMutex";
// Long enough for a change of folder.
constexpr DWORD shortPatience = 1000; // milliseconds

// The runs of a process follow one another, unless one begins inside another on the host's thread.
std::atomic<bool> hasRunInProgress{false};

} // namespace

MatlabTurn::~MatlabTurn() {
    if (isForRun_)
        hasRunInProgress = false;
    if (mutex_)
        ReleaseMutex(mutex_.get());
}

bool MatlabTurn::takeForRun(HANDLE cancelEvent, std::wstring& error) {
    if (hasRunInProgress.exchange(true))
        return fail(
            error, L"Matlab is running the script of another unit of this simulator, which has started this "
                   L"calculation and waits for it. Matlab runs one script at a time: calculate the units one "
                   L"after the other, or let GNU Octave stand in for Matlab, where each unit has an Octave "
                   L"of its own");
    isForRun_ = true;
    if (wait(INFINITE, cancelEvent))
        return true;
    return fail(error, L"The unit was terminated while it waited for its turn on Matlab");
}

bool MatlabTurn::isRunInProgress() {
    return hasRunInProgress;
}

bool MatlabTurn::takeSoon() {
    return wait(shortPatience);
}

bool MatlabTurn::wait(DWORD patience, HANDLE cancelEvent) {
    mutex_.reset(CreateMutexW(nullptr, FALSE, mutexName));
    // The mutex belongs to another user in this session, who has a Matlab of his own.
    if (!mutex_)
        return true;
    // A process that died leaves its turn as an abandoned mutex.
    const HANDLE handles[] = {mutex_.get(), cancelEvent};
    const DWORD waited = WaitForMultipleObjects(cancelEvent ? 2 : 1, handles, FALSE, patience);
    if (waited != WAIT_OBJECT_0 && waited != WAIT_ABANDONED_0)
        mutex_.reset();
    return static_cast<bool>(mutex_);
}

} // namespace solvane
