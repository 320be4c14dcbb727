/// Changes of a case's parameters, each of which its results should show.
#pragma once

#include "Variations.h"
#include "results/RunResults.h"

#include <string>
#include <vector>

namespace solvane::host {

struct ParameterChange {
    std::string name; ///< of the parameter, in a flowsheet after that of its unit
    std::size_t unit = 0;
    std::string parameter;
    std::vector<CaseVariation> variations;
};

/// Each real input changed by 1 % and by a factor of 2, within its bounds. Without those that are 0 or that
/// often have no effect, such as tolerances, and those of units with texts or booleans among their inputs,
/// which may choose what else counts. `units` are of a run of the case.
std::vector<ParameterChange> parameterChanges(const Case& flowsheet, const std::vector<UnitResult>& units);

} // namespace solvane::host
