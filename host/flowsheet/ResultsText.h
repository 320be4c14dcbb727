#pragma once

#include "RunResults.h"

#include <string>

namespace solvane::host {

/// The streams as a table, a column each, UTF-8.
std::string streamTable(const RunResults& results);

/// The output parameters, a line each; empty where there are none.
std::string outputParameterLines(const RunResults& results);

} // namespace solvane::host
