/// Turns on a Matlab that serves several clients. It carries out one command after another, whoever sends
/// them, and a run is two of them: between the unit's `cd` and the end of its script no other unit may come.
#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// The turn of a unit among those of this process and of all others, held by the thread that took it. A
/// process that dies loses its turn. The system gives each session turns of its own, as it gives each a
/// Matlab.
class MatlabTurn {
public:
    MatlabTurn() = default;
    ~MatlabTurn();
    MatlabTurn(const MatlabTurn&) = delete;
    MatlabTurn& operator=(const MatlabTurn&) = delete;

    /// Waits until it is this unit's turn to run, or the event is set. False, with a text, on that event, and
    /// within another run of this process, whose turn would never end.
    [[nodiscard]] bool takeForRun(HANDLE cancelEvent, std::wstring& error);

    /// False where another unit has its turn, and keeps it longer than a moment.
    [[nodiscard]] bool takeSoon();

private:
    bool wait(DWORD patience, HANDLE cancelEvent = nullptr);

    Handle mutex_; ///< null where there is nothing to give back
    bool isForRun_ = false;
};

} // namespace solvane
