/// Units of measure and the dimensions of parameters: exponents of m, kg, s, A, K, mol, cd, rad in this
/// order.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// A value in SI units is `factor` times the value in this unit, plus `offset`.
struct UnitOfMeasure {
    std::vector<double> exponents;
    double factor = 1;
    double offset = 0; ///< of scales with a zero of their own, such as degC and barg

    bool isSi() const { return factor == 1 && offset == 0; }
    double toSi(double value) const { return factor * value + offset; }
    double fromSi(double value) const { return (value - offset) / factor; }
};

/// A unit: powers of units such as "J/mol/K", "kg m2 s-3", "kmol/h", "1", where a slash divides by the single
/// factor after it. Nothing for an unknown unit, and for a scale with a zero of its own inside a larger unit.
std::optional<UnitOfMeasure> parseUnit(std::string_view unit);

/// What an unknown unit probably means: that with the closest known factors. Empty if one has none.
std::string meantUnit(std::string_view unit);

/// The SI unit with these exponents, preferably one of the usual ones. Empty if all are 0 or none is given.
std::string unitText(std::span<const double> exponents);

/// kg/s
inline constexpr std::array massFlowDimension{0.0, 1.0, -1.0};

/// Whether the dimensions are the same; absent exponents are 0, and what follows the eighth is ignored.
bool isSameDimension(std::span<const double> left, std::span<const double> right);

/// Whether a ninth exponent marks a difference of such quantities, which has no zero of its own.
bool isDifference(std::span<const double> exponents);

/// The known units with these exponents, separated by commas, for messages.
std::string unitsOfDimension(std::span<const double> exponents);

} // namespace solvane::host
