#pragma once

#include "RunResults.h"
#include "TableUnits.h"

#include <string>

namespace solvane::host {

/// The streams as comma-separated values (RFC 4180, UTF-8): a header with the units, then one line per stream
/// with all digits of its numbers.
std::string streamsCsv(const RunResults& results, const TableUnits& units);

} // namespace solvane::host
