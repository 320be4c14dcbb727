/// The unit's connection to Matlab. A call to Matlab returns only when Matlab has finished, in a run with the
/// whole script, so a separate thread makes the call while the host's thread serves the script's requests.
#pragma once

#include "com/Handle.h"

namespace solvane {

struct MatlabWorker;

/// Starts the thread, which waits for its first WorkerCommand and ends after `quit`. It answers each command
/// with `workerDoneEvent`.
Handle startMatlabThread(MatlabWorker& worker);

} // namespace solvane
