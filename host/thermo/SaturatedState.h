/// Where a mixture has a given vapour fraction.
#pragma once

#include "SaturationLine.h"

#include <string>

namespace solvane::host {

/// Finds the state of the given vapour fraction (0 to 1) at the given temperature or pressure, and of several
/// the first that one meets on the line coming from low pressure. False with a text where none is found. The
/// mixture has two compounds or more.
bool findSaturatedState(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                        SaturatedState& state, std::string& error);

/// The same as phases, for any number of compounds, and within the bounds of temperature and pressure.
bool saturatedEquilibrium(const Mixture& mixture, double vaporFraction, FlashVariable fixed, double value,
                          Equilibrium& result, std::string& error);

} // namespace solvane::host
