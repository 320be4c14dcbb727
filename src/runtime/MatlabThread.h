/// The unit's connection to Matlab. A call to Matlab returns only when Matlab is done, which for a run is the
/// whole script, so it blocks on a thread of its own while the host's thread serves the script's requests.
#pragma once

#include "com/Handle.h"

namespace solvane {

struct MatlabWorker;

/// Starts the thread, which waits for its first WorkerCommand and ends after `quit`. Each command is answered
/// with `workerDoneEvent`.
Handle startMatlabThread(MatlabWorker& worker);

} // namespace solvane
