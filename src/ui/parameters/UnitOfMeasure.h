/// Dimensionalities: the exponents of meter, kilogram, second, ampere, kelvin, mole, candela and radian, and
/// then 1 for a difference. Missing exponents at the end are 0.
#pragma once

#include <array>
#include <clocale>
#include <span>
#include <string>
#include <vector>

namespace solvane {

inline constexpr std::size_t baseUnitCount = 8;

/// As in "m kg / s2". Empty where all exponents are 0.
std::wstring unitText(std::span<const double> dimensionality);

/// Reads the exponents as typed. A field without a number counts as 0; zeros at the end are left out.
std::vector<double> readDimensionality(const std::array<std::wstring, baseUnitCount>& exponents,
                                       bool isDifference, _locale_t locale);

} // namespace solvane
