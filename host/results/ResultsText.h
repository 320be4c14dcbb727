#pragma once

#include "RunResults.h"

#include <string>

namespace solvane::host {

/// The streams as a table, one column each, UTF-8. Pressures are in bar, all else in the results' units.
std::string streamTable(const RunResults& results);

/// A table of the unit's inflows, outflows and their differences; without moles if the unit reacts.
std::string balanceTable(const Balance& balance);

/// One line per warning; empty if there is none.
std::string warningLines(const std::vector<Warning>& warnings);

/// The unit's output parameters, one line each; empty if there are none.
std::string outputParameterLines(const UnitResult& unit);

} // namespace solvane::host
