#pragma once

#include "Connection.h"

namespace solvane::engine {

/// Serves a connection on which the gateway inside Octave reaches a unit, until it is closed: uses the unit's
/// block and events for the gateway. Checks every request, and answers one that it cannot fulfil with
/// `failed` and the reason.
void serveGateway(Connection& connection);

} // namespace solvane::engine
