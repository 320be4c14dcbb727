/// What is flashed.
#pragma once

#include "PengRobinson.h"

#include <cmath>

namespace solvane::host {

/// A mixture without absent compounds: all mole fractions are positive and sum to 1.
struct Mixture {
    std::vector<const Compound*> compounds;
    std::vector<double> composition;
    std::vector<double> logComposition;
    std::vector<WilsonVolatility> volatilities;

    std::size_t count() const { return compounds.size(); }

    void reserve(std::size_t count) {
        compounds.reserve(count);
        composition.reserve(count);
        logComposition.reserve(count);
        volatilities.reserve(count);
    }
    void add(const Compound& compound, double fraction) {
        compounds.push_back(&compound);
        composition.push_back(fraction);
        logComposition.push_back(std::log(fraction));
        volatilities.emplace_back(compound);
    }
};

} // namespace solvane::host
