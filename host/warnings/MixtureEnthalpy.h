/// Enthalpies of mixtures in states that no stream has.
#pragma once

#include "thermo/PropertyPackage.h"

#include <optional>
#include <span>

namespace solvane::host {

/// J/mol of the mixture at a pressure in Pa and at another condition: `enthalpy` or `enthalpyF`. None where
/// the package has no such state.
std::optional<double> mixtureEnthalpy(std::span<const Compound* const> compounds,
                                      std::span<const double> composition, double pressure,
                                      const FlashCondition& condition, PhaseProperty enthalpy);

} // namespace solvane::host
