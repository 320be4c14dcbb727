/// What is flashed.
#pragma once

#include "Compound.h"

#include <vector>

namespace solvane::host {

/// A mixture without absent compounds: all mole fractions are positive and sum to 1.
struct Mixture {
    std::vector<const Compound*> compounds;
    std::vector<double> composition;
    std::vector<double> logComposition;

    std::size_t count() const { return compounds.size(); }
};

} // namespace solvane::host
