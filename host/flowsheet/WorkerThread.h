#pragma once

#include "UnitCalls.h"

#include <functional>

namespace solvane::host {

/// Runs `task` on a thread of the multi-threaded apartment with proxies of the unit and the materials, and
/// serves the calling thread's messages, which carry the proxies' calls, until it has ended. False with a
/// text if a proxy cannot be made, or with the task's text.
bool runOnWorker(ICapeUnit* unit, const std::vector<Connection>& connections,
                 const std::function<bool(ICapeUnit* unit, const std::vector<Connection>& connections,
                                          std::string& error)>& task,
                 std::string& error);

} // namespace solvane::host
