#include "UnitOfMeasure.h"

#include "com/Numbers.h"
#include "com/Text.h"
#include "ui/controls/NumberFields.h"

#include <cmath>

namespace solvane {

namespace {

constexpr std::array<const wchar_t*, baseUnitCount> words{L"m", L"kg",  L"s",  L"A",
                                                          L"K", L"mol", L"cd", L"rad"};

/// The unit and, unless it is 1, the exponent.
std::wstring power(std::size_t unit, double exponent) {
    constexpr double tolerance = 1e-10;
    const bool isOne = std::abs(exponent - 1) <= tolerance;
    return words[unit] + (isOne ? std::wstring() : widen(printReal(exponent)));
}

} // namespace

std::wstring unitText(std::span<const double> dimensionality) {
    const auto exponents = dimensionality.first(std::min(dimensionality.size(), baseUnitCount));
    std::wstring text;
    for (std::size_t unit = 0; unit < exponents.size(); ++unit)
        if (exponents[unit] > 0)
            text += (text.empty() ? L"" : L" ") + power(unit, exponents[unit]);
    for (std::size_t unit = 0; unit < exponents.size(); ++unit)
        if (exponents[unit] < 0)
            text += (text.empty() ? L"1 / " : L" / ") + power(unit, -exponents[unit]);
    return text;
}

std::vector<double> readDimensionality(const std::array<std::wstring, baseUnitCount>& exponents,
                                       bool isDifference, _locale_t locale) {
    std::vector<double> dimensionality;
    for (std::size_t unit = 0; unit < baseUnitCount; ++unit)
        if (const std::optional<double> exponent = readNumber<double>(exponents[unit], locale)) {
            dimensionality.resize(unit);
            dimensionality.push_back(*exponent);
        }
    if (isDifference) {
        dimensionality.resize(baseUnitCount);
        dimensionality.push_back(1.0);
    }
    return dimensionality;
}

} // namespace solvane
