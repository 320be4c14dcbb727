#pragma once

#include "RunResults.h"

#include <string>

namespace solvane::host {

/// The flowsheet as an SVG element: the units as boxes, in columns from left to right as the streams go, and
/// the streams as lines with their names. Warned units and failed ones have the classes "warned" and
/// "failed".
std::string flowsheetSvg(const RunResults& results);

} // namespace solvane::host
