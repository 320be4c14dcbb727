/// The amounts of two phases by their ratios of mole fractions.
#pragma once

#include <optional>
#include <span>

namespace solvane::host {

/// The fraction of a first phase whose mole fractions are these multiples of the second's (H. H. Rachford, J.
/// D. Rice, J. Pet. Technol. 4 (1952) 19), to some three digits. Nothing if it does not lie within 0 and 1.
std::optional<double> phaseFraction(std::span<const double> composition, std::span<const double> ratios);

} // namespace solvane::host
