/// Flashes at a given pressure where the temperature follows from an enthalpy or an entropy.
#pragma once

#include "MolarProperties.h"
#include "PhaseSplit.h"

#include <string>

namespace solvane::host {

/// The property of the whole mixture: that of its phases by their fractions.
double overallProperty(const Mixture& mixture, const Equilibrium& state, double MolarProperties::*property);

/// Finds the stable state at the pressure whose property, which must rise with temperature, has the value.
/// False where no temperature within the bounds gives it. `error` then says so but for the property's name.
bool flashAtProperty(const Mixture& mixture, double pressure, double MolarProperties::*property, double value,
                     Equilibrium& result, std::string& error);

} // namespace solvane::host
