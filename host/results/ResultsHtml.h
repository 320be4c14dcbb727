#pragma once

#include "RunResults.h"
#include "TableUnits.h"

#include <string>

namespace solvane::host {

/// The results as a page for the browser (UTF-8), which needs no other file: the flowsheet as a drawing, the
/// tables, reports and warnings, and the error of a failed run. It is well-formed XML, too.
std::string resultsHtml(const RunResults& results, const TableUnits& units, const std::string& title);

} // namespace solvane::host
