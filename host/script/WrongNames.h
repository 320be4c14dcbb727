/// The names of phases and compounds that a script looks for.
#pragma once

#include "ScriptFinding.h"
#include "cases/CaseModel.h"

#include <span>
#include <vector>

namespace solvane::host {

/// The names that the script and the additional files compare with phases or with compounds, and that are
/// nearly those of the package's phases or of these compounds: nothing ever equals them, and no run shows
/// why. A name that a comparison tries beside a right one is meant for other packages, and one of another
/// compound for other flowsheets.
std::vector<ScriptFinding> wrongPhaseNames(const UnitModel& model);
std::vector<ScriptFinding> wrongCompoundNames(const UnitModel& model,
                                              std::span<const Compound* const> compounds);

/// The other names that the script compares with compounds without a right one, and without a look whether
/// there is such a compound: what they index is empty, which may make the script fail.
std::vector<ScriptFinding> absentCompoundNames(const UnitModel& model,
                                               std::span<const Compound* const> compounds);

} // namespace solvane::host
