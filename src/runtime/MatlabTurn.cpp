#include "MatlabTurn.h"

#include <atomic>

namespace solvane {

namespace {

constexpr wchar_t mutexName[] = L"SolvaneUnitOperationSharedMatlabMutex";
// Enough for a change of folder.
constexpr DWORD aMoment = 1000; // milliseconds

// The runs of a process go one after the other, unless one begins within another on the host's thread.
std::atomic<bool> isRunInProgress{false};

} // namespace

MatlabTurn::~MatlabTurn() {
    if (isForRun_)
        isRunInProgress = false;
    if (mutex_)
        ReleaseMutex(mutex_.get());
}

bool MatlabTurn::takeForRun(HANDLE cancelEvent, std::wstring& error) {
    if (isRunInProgress.exchange(true)) {
        error =
            L"Matlab is running the script of another unit of this simulator, which has started this "
            L"calculation and waits for it. Matlab runs one script at a time: calculate the units one after "
            L"the other, or let GNU Octave stand in for Matlab, where each unit has an Octave of its own";
        return false;
    }
    isForRun_ = true;
    if (wait(INFINITE, cancelEvent))
        return true;
    error = L"The unit was terminated while it waited for its turn on Matlab";
    return false;
}

bool MatlabTurn::takeSoon() {
    return wait(aMoment);
}

bool MatlabTurn::wait(DWORD patience, HANDLE cancelEvent) {
    mutex_.reset(CreateMutexW(nullptr, FALSE, mutexName));
    // Another user of this session has it, who also has a Matlab of his own.
    if (!mutex_)
        return true;
    // The turn of a process that died comes as an abandoned mutex.
    const HANDLE handles[] = {mutex_.get(), cancelEvent};
    const DWORD waited = WaitForMultipleObjects(cancelEvent ? 2 : 1, handles, FALSE, patience);
    if (waited != WAIT_OBJECT_0 && waited != WAIT_ABANDONED_0)
        mutex_.reset();
    return static_cast<bool>(mutex_);
}

} // namespace solvane
