/// What the unit's thread shares with its Matlab thread, and nothing else of the unit.
#pragma once

#include "WorkingFolder.h"
#include "com/Handle.h"

#include <cstdint>
#include <string>

namespace solvane {

/// What the worker thread is to do, and afterwards whether it succeeded.
struct WorkerCommand {
    static constexpr std::int32_t start = 0;
    static constexpr std::int32_t quit = 1;
    static constexpr std::int32_t run = 2;
    static constexpr std::int32_t succeeded = 0;
    static constexpr std::int32_t failed = 1;
};

/// The fields that the Matlab thread reads and writes. It writes only those that are marked, and only between
/// `workerCommandEvent` and `workerDoneEvent`, which order the two threads.
struct MatlabWorker {
    WorkingFolder workingFolder; ///< where the script runs
    std::string startupError;    ///< why `startupOk` is false (worker thread: start)
    bool startupOk = true;       ///< the unit may be used (worker thread: start)

    Handle workerCommandEvent;
    Handle workerDoneEvent;
    Handle workerCancelEvent; ///< once it is set, a run that waits for its turn on Matlab gives up
    Handle workerThread;
    std::wstring workerError;       ///< why a run failed (worker thread: run)
    std::wstring workerOutput;      ///< what Matlab printed in it (worker thread: run)
    std::int32_t workerCommand = 0; ///< a WorkerCommand and its outcome (worker thread: all)
};

} // namespace solvane
