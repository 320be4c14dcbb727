/// Pipes for the messages of a connection. Under Wine each call on a socket takes several requests to Wine's
/// server, which all programs share, and a call on a pipe none.
#pragma once

#include "EngineClient.h"

namespace solvane::engine {

/// Lets the messages of a new connection pass through pipes, if the server can open them, and otherwise
/// leaves everything as it is. False if the connection is broken.
[[nodiscard]] bool moveToPipes(EngineClient& client);

} // namespace solvane::engine
