/// Keeps a server that Wine runs from hanging.
#pragma once

#include "ComRef.h"

#include <objidl.h>

namespace solvane {

/// While this object exists, COM keeps a stub of the interface in this apartment. Does nothing on Windows.
///
/// With the last stub of an interface Wine waits for the calls that are still ending. If one ends while it
/// begins to wait, it waits for ever (RpcServerUnregisterIf of Wine 8 and 10): a client that releases its
/// object right after a call then hangs together with its server, once in some thousand times.
class LastingStub {
public:
    /// Errors leave the apartment without the stub.
    explicit LastingStub(REFIID iid);
    ~LastingStub();
    LastingStub(const LastingStub&) = delete;
    LastingStub& operator=(const LastingStub&) = delete;

private:
    ComRef<IStream> marshalled_; ///< empty without a stub
};

} // namespace solvane
