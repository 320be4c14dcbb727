/// Who may talk to a unit that is in a run: one at a time. The unit answers whoever asks, and two askers
/// would take each other's answers and wait for ever.
#pragma once

#include "channel/ChannelNames.h"

#include <windows.h>

#include <memory>
#include <string>

namespace solvane {

/// Holds a unit for its lifetime, which ends on the thread that took it. It goes with its process at the
/// latest.
class UnitClaim {
public:
    /// False with a text where another holds the unit. One that is just about to go is waited for: Octave may
    /// have ended under its script.
    [[nodiscard]] bool take(const std::string& unitId, std::string& error) {
        constexpr DWORD patience = 2000;
        const HANDLE mutex = CreateMutexA(nullptr, FALSE, claimName(unitId).c_str());
        const DWORD outcome = mutex ? WaitForSingleObject(mutex, patience) : WAIT_FAILED;
        if (outcome == WAIT_OBJECT_0 || outcome == WAIT_ABANDONED) {
            mutex_.reset(mutex);
            return true;
        }
        if (mutex)
            CloseHandle(mutex);
        error = "another script is running for the unit operation " + unitId +
                ": wait until its calculation has ended";
        return false;
    }

private:
    struct Release {
        using pointer = HANDLE;
        void operator()(HANDLE mutex) const {
            ReleaseMutex(mutex);
            CloseHandle(mutex);
        }
    };
    std::unique_ptr<void, Release> mutex_;
};

} // namespace solvane
