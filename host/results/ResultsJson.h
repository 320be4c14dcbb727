#pragma once

#include "RunResults.h"

#include <string>

namespace solvane::host {

/// The results as a JSON document (UTF-8, SI units), also those of a failed run; docs/results.schema.json
/// describes it. A number that is not finite is null. With the indent -1 it is one line.
std::string resultsJson(const RunResults& results, int indent = 2);

} // namespace solvane::host
