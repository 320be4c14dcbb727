/// Results as tables for people, UTF-8.
#pragma once

#include "RunResults.h"
#include "TableUnits.h"
#include "TextTable.h"

#include <string>

namespace solvane::host {

/// The streams as a table, one column each.
Table streamTable(const RunResults& results, const TableUnits& units);

/// The phases of the streams that have more than one, one column each; empty if there is none.
Table phaseTable(const RunResults& results);

/// A table of the unit's inflows, outflows and their differences. Of a unit that reacts it shows the elements
/// instead of the moles.
Table balanceTable(const Balance& balance, const TableUnits& units);

/// What a reader must know to judge the balance, a line each: that it includes heats of formation, and that
/// no parameter shows the heat or power which closes it.
std::vector<std::string> balanceNotes(const Balance& balance, const UnitResult& unit,
                                      const TableUnits& units);

/// How the recycles converged, a line for each iteration.
Table convergenceTable(const ConvergenceResult& convergence);

/// The trials of a search for a target, a line for each.
Table trialTable(const AdjustmentResult& adjustment);

/// "Drum, stream Vapor"
std::string subjectText(const Warning& warning);

/// One line per warning; empty if there is none.
std::string warningLines(const std::vector<Warning>& warnings);

/// The unit's parameters, one line each, the inputs first; empty if there are none.
Table parameterTable(const UnitResult& unit, const TableUnits& units);

} // namespace solvane::host
