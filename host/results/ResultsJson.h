#pragma once

#include "RunResults.h"

#include <string>

namespace solvane::host {

/// The results as a JSON document (UTF-8, SI units):
///     { "generation": "1.1",
///       "streams": [ { "name", "temperature", "pressure", "totalFlow", "fraction": { compound: x },
///                      "vaporFraction", "enthalpy", "enthalpyF" } ],
///       "balances": [ { "unit", "mass": { "in", "out" }, "moles": { "in", "out" },
///                       "enthalpy": { "in", "out" }, "reacts" } ],
///       "warnings": [ { "unit", "subject", "text" } ],
///       "parameters": { name: value },
///       "reports": { name: text } }
/// A case that lists its units has the parameters and reports of each unit instead:
///       "units": [ { "name", "parameters": { name: value }, "reports": { name: text } } ]
/// A number that is not finite is null.
std::string resultsJson(const RunResults& results);

} // namespace solvane::host
