/// Dimensions of parameters: exponents of m, kg, s, A, K, mol, cd, rad in this order.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// The exponents of a unit: powers of SI units such as "J/mol/K", "kg m2 s-3", "1", where a stroke divides by
/// the one factor behind it. Nothing for a unit that is not known.
std::optional<std::vector<double>> parseUnit(std::string_view unit);

/// The unit with these exponents, one of the usual ones where it fits. Empty where all are 0, or none given.
std::string unitText(std::span<const double> exponents);

} // namespace solvane::host
