#pragma once

#include "results/RunResults.h"

namespace solvane::host {

/// A unit whose calculation failed, and what was known until then. Refers to what its maker keeps.
struct FailedUnit {
    const RunResults& results;
    const UnitResult& unit;
    const UnitModel* model; ///< null if the case names a file with the model
};

} // namespace solvane::host
