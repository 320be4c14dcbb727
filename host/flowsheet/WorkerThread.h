#pragma once

#include "UnitCalls.h"

#include <functional>

namespace solvane::host {

/// Runs `task` on a thread of the multi-threaded apartment with proxies of the unit and the materials, and
/// serves the calling thread's messages, by which the proxies' calls come in, until it has ended. False with
/// a text where a proxy cannot be had, or with the task's.
bool runOnWorker(ICapeUnit* unit, const std::vector<Connection>& connections,
                 const std::function<bool(ICapeUnit* unit, const std::vector<Connection>& connections,
                                          std::string& error)>& task,
                 std::string& error);

} // namespace solvane::host
