#pragma once

#include "Connection.h"

namespace solvane::engine {

/// Serves a connection on which the gateway inside Octave reaches a unit, until it is closed: stands in for
/// the gateway at the unit's block and events. What the gateway asks for is checked against what there is; a
/// request that cannot be met is answered by `failed` with the reason.
void serveGateway(Connection& connection);

} // namespace solvane::engine
