/// Dimensions of parameters: exponents of m, kg, s, A, K, mol, cd, rad in this order.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// The exponents of a unit: powers of SI units such as "J/mol/K", "kg m2 s-3", "1", where a slash divides by
/// the single factor after it. Nothing for an unknown unit.
std::optional<std::vector<double>> parseUnit(std::string_view unit);

/// The unit with these exponents, preferably one of the usual ones. Empty if all are 0 or none is given.
std::string unitText(std::span<const double> exponents);

} // namespace solvane::host
