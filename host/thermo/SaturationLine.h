/// The states of a mixture that have a given vapour fraction: bubble line, dew line, and those between.
#pragma once

#include "PhaseSplit.h"

#include <string>

namespace solvane::host {

struct SaturatedState {
    double temperature = 0; ///< K
    double pressure = 0;    ///< Pa
    std::vector<double> vapor;
    std::vector<double> liquid;
};

/// Finds the state of the given vapour fraction (0 to 1) at the given temperature or pressure, and of several
/// the first that one meets on the line coming from low pressure. False with a text where the line does not
/// reach the temperature or pressure. The mixture has two compounds or more.
bool findSaturatedState(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                        SaturatedState& state, std::string& error);

} // namespace solvane::host
