#pragma once

namespace solvane::engine {

/// Ends this process when its client's process ends, however that comes, and calls `cleanUp` before, on
/// another thread than the main one.
///
/// Windows needs no help: COM there pings its clients, and releases after some minutes what a dead one held,
/// which is the end of this process as well. Wine's COM does not ping, but starts the server from the
/// client's own process, so that the parent is the client.
void endWithClient(void (*cleanUp)() = nullptr);

} // namespace solvane::engine
