#include "Dimensionality.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace solvane::host {

namespace {

constexpr std::size_t dimensionCount = 8;
using Exponents = std::array<double, dimensionCount>;

struct Unit {
    std::string_view symbol;
    Exponents exponents;
};

// clang-format off
/// Coherent SI units: the base units first, in the order of the exponents.
constexpr std::array units{
    //                         m  kg   s  A  K mol cd rad
    Unit{"m",   Exponents{     1,  0,  0, 0, 0, 0, 0, 0}},
    Unit{"kg",  Exponents{     0,  1,  0, 0, 0, 0, 0, 0}},
    Unit{"s",   Exponents{     0,  0,  1, 0, 0, 0, 0, 0}},
    Unit{"A",   Exponents{     0,  0,  0, 1, 0, 0, 0, 0}},
    Unit{"K",   Exponents{     0,  0,  0, 0, 1, 0, 0, 0}},
    Unit{"mol", Exponents{     0,  0,  0, 0, 0, 1, 0, 0}},
    Unit{"cd",  Exponents{     0,  0,  0, 0, 0, 0, 1, 0}},
    Unit{"rad", Exponents{     0,  0,  0, 0, 0, 0, 0, 1}},
    Unit{"Pa",  Exponents{    -1,  1, -2, 0, 0, 0, 0, 0}},
    Unit{"N",   Exponents{     1,  1, -2, 0, 0, 0, 0, 0}},
    Unit{"J",   Exponents{     2,  1, -2, 0, 0, 0, 0, 0}},
    Unit{"W",   Exponents{     2,  1, -3, 0, 0, 0, 0, 0}},
    Unit{"V",   Exponents{     2,  1, -3,-1, 0, 0, 0, 0}},
    Unit{"1",   Exponents{     0,  0,  0, 0, 0, 0, 0, 0}},
};
// clang-format on

/// Units that are usually written as such and not in base units.
constexpr std::array<std::string_view, 6> usualQuotients{"J/mol", "J/mol/K", "W/m2/K",
                                                         "W/m/K", "Pa s",    "J/kg"};

/// Adds the exponents of a factor such as "m2", "s-1", "K" to those of the unit.
bool addFactor(std::string_view factor, double sign, Exponents& exponents) {
    const auto exponentStart = std::min(factor.find_first_of("-0123456789", 1), factor.size());
    const std::string_view symbol = factor.substr(0, exponentStart);
    const std::string_view power = factor.substr(exponentStart);
    const auto unit = std::ranges::find(units, symbol, &Unit::symbol);
    double exponent = 1;
    if (!power.empty()) {
        const auto [end, code] = std::from_chars(power.data(), power.data() + power.size(), exponent);
        if (code != std::errc() || end != power.data() + power.size() || !std::isfinite(exponent))
            return false;
    }
    if (unit == units.end())
        return false;
    for (std::size_t i = 0; i < dimensionCount; ++i)
        exponents[i] += sign * exponent * unit->exponents[i];
    return true;
}

std::string numberText(double number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", number);
    return text.data();
}

} // namespace

std::optional<std::vector<double>> parseUnit(std::string_view unit) {
    Exponents exponents{};
    double sign = 1;
    bool any = false;
    for (std::size_t place = 0; place < unit.size();) {
        if (unit[place] == ' ' || unit[place] == '/') {
            sign = unit[place] == '/' ? -1 : sign;
            ++place;
            continue;
        }
        const std::size_t end = std::min(unit.find_first_of(" /", place), unit.size());
        if (!addFactor(unit.substr(place, end - place), sign, exponents))
            return std::nullopt;
        any = true;
        sign = 1;
        place = end;
    }
    if (!any)
        return std::nullopt;
    return std::vector<double>(exponents.begin(), exponents.end());
}

std::string unitText(std::span<const double> exponents) {
    if (std::ranges::all_of(exponents, [](double exponent) { return exponent == 0; }))
        return {};
    Exponents padded{};
    std::ranges::copy(exponents.first(std::min(exponents.size(), dimensionCount)), padded.begin());
    const auto unit = std::ranges::find(units, padded, &Unit::exponents);
    if (unit != units.end())
        return std::string(unit->symbol);
    for (const std::string_view quotient : usualQuotients)
        if (std::ranges::equal(*parseUnit(quotient), padded))
            return std::string(quotient);
    std::string text;
    for (std::size_t i = 0; i < dimensionCount; ++i) {
        if (padded[i] == 0)
            continue;
        text.append(text.empty() ? "" : " ").append(units[i].symbol);
        if (padded[i] != 1)
            text += numberText(padded[i]);
    }
    return text;
}

} // namespace solvane::host
