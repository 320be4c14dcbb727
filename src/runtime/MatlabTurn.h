/// Turns on a Matlab that serves several clients. It executes one command after another, whoever sends them,
/// and a run needs two: no other unit may send one between the unit's `cd` and the end of its script.
#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// The turn of a unit among those of this process and of all others, held by the thread that took it. A
/// process that dies loses its turn. Each session of the system has its own turns, as it has its own
/// Matlab.
class MatlabTurn {
public:
    MatlabTurn() = default;
    ~MatlabTurn();
    MatlabTurn(const MatlabTurn&) = delete;
    MatlabTurn& operator=(const MatlabTurn&) = delete;

    /// Waits for this unit's turn to run, or for the event. False, with a text, on that event, and inside
    /// another run of this process, whose turn would never end.
    [[nodiscard]] bool takeForRun(HANDLE cancelEvent, std::wstring& error);

    /// Whether a run of this process has its turn, or waits for it.
    static bool isRunInProgress();

    /// Waits for a short time. False if another unit keeps its turn longer.
    [[nodiscard]] bool takeSoon();

private:
    bool wait(DWORD patience, HANDLE cancelEvent = nullptr);

    Handle mutex_; ///< null if there is nothing to release
    bool isForRun_ = false;
};

} // namespace solvane
