#pragma once

#include "RunResults.h"

#include <string>

namespace solvane::host {

/// The streams as a table, a column each, UTF-8. Pressures are in bar, all else in the results' units.
std::string streamTable(const RunResults& results);

/// The unit's output parameters, a line each; empty where there are none.
std::string outputParameterLines(const UnitResult& unit);

} // namespace solvane::host
