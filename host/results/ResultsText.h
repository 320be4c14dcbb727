#pragma once

#include "RunResults.h"

#include <string>

namespace solvane::host {

/// The streams as a table, a column each, UTF-8. Pressures are in bar, all else in the results' units.
std::string streamTable(const RunResults& results);

/// What goes into the unit and what comes out, and the difference, in a table. Moles are left out where the
/// unit reacts.
std::string balanceTable(const Balance& balance);

/// A line each; empty where there is none.
std::string warningLines(const std::vector<Warning>& warnings);

/// The unit's output parameters, a line each; empty where there are none.
std::string outputParameterLines(const UnitResult& unit);

} // namespace solvane::host
