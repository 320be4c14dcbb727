#include "UnitOfMeasure.h"

#include "NumberText.h"
#include "ParameterRules.h"
#include "channel/Hints.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace solvane::host {

namespace {

constexpr std::size_t dimensionCount = 8;
using Exponents = std::array<double, dimensionCount>;

struct Symbol {
    std::string_view symbol;
    Exponents exponents;
    double factor = 1;
    double offset = 0;
};

constexpr double footPerMetre = 0.3048;         // exact, as all factors below: NIST Special Publication 811,
constexpr double kilogramPerPound = 0.45359237; // Appendix B (2008)
constexpr double pascalPerPsi = kilogramPerPound * 9.80665 / (0.0254 * 0.0254);
constexpr double pascalPerAtmosphere = 101325;
constexpr double joulePerBtu = 1055.05585262; // International Table
constexpr double joulePerCalorie = 4.184;     // thermochemical
constexpr double kelvinAtZeroCelsius = 273.15;
constexpr double kelvinPerRankine = 5.0 / 9;

// clang-format off
constexpr Exponents length     {  1,  0,  0, 0, 0, 0, 0, 0};
constexpr Exponents mass       {  0,  1,  0, 0, 0, 0, 0, 0};
constexpr Exponents duration   {  0,  0,  1, 0, 0, 0, 0, 0};
constexpr Exponents temperature{  0,  0,  0, 0, 1, 0, 0, 0};
constexpr Exponents amount     {  0,  0,  0, 0, 0, 1, 0, 0};
constexpr Exponents pressure   { -1,  1, -2, 0, 0, 0, 0, 0};
constexpr Exponents energy     {  2,  1, -2, 0, 0, 0, 0, 0};
constexpr Exponents power      {  2,  1, -3, 0, 0, 0, 0, 0};
constexpr Exponents volume     {  3,  0,  0, 0, 0, 0, 0, 0};
constexpr Exponents viscosity  { -1,  1, -1, 0, 0, 0, 0, 0};

/// First the coherent SI units, the base units in the order of the exponents; a unit's text uses these.
constexpr std::array units{
    Symbol{"m",     length},
    Symbol{"kg",    mass},
    Symbol{"s",     duration},
    Symbol{"A",     {  0,  0,  0, 1, 0, 0, 0, 0}},
    Symbol{"K",     temperature},
    Symbol{"mol",   amount},
    Symbol{"cd",    {  0,  0,  0, 0, 0, 0, 1, 0}},
    Symbol{"rad",   {  0,  0,  0, 0, 0, 0, 0, 1}},
    Symbol{"Pa",    pressure},
    Symbol{"N",     {  1,  1, -2, 0, 0, 0, 0, 0}},
    Symbol{"J",     energy},
    Symbol{"W",     power},
    Symbol{"V",     {  2,  1, -3,-1, 0, 0, 0, 0}},
    Symbol{"1",     {}},

    Symbol{"%",     {},          0.01},
    Symbol{"mm",    length,      1e-3},
    Symbol{"cm",    length,      1e-2},
    Symbol{"km",    length,      1e3},
    Symbol{"in",    length,      0.0254},
    Symbol{"ft",    length,      footPerMetre},
    Symbol{"g",     mass,        1e-3},
    Symbol{"t",     mass,        1e3},
    Symbol{"lb",    mass,        kilogramPerPound},
    Symbol{"min",   duration,    60},
    Symbol{"h",     duration,    3600},
    Symbol{"d",     duration,    86400},
    Symbol{"degC",  temperature, 1,                kelvinAtZeroCelsius},
    Symbol{"degF",  temperature, kelvinPerRankine, kelvinAtZeroCelsius - 32 * kelvinPerRankine},
    Symbol{"degR",  temperature, kelvinPerRankine},
    Symbol{"mmol",  amount,      1e-3},
    Symbol{"kmol",  amount,      1e3},
    Symbol{"lbmol", amount,      1e3 * kilogramPerPound},
    Symbol{"mbar",  pressure,    1e2},
    Symbol{"kPa",   pressure,    1e3},
    Symbol{"bar",   pressure,    1e5},
    Symbol{"barg",  pressure,    1e5,              pascalPerAtmosphere},
    Symbol{"MPa",   pressure,    1e6},
    Symbol{"atm",   pressure,    pascalPerAtmosphere},
    Symbol{"psi",   pressure,    pascalPerPsi},
    Symbol{"psig",  pressure,    pascalPerPsi,     pascalPerAtmosphere},
    Symbol{"kJ",    energy,      1e3},
    Symbol{"MJ",    energy,      1e6},
    Symbol{"GJ",    energy,      1e9},
    Symbol{"kWh",   energy,      3.6e6},
    Symbol{"cal",   energy,      joulePerCalorie},
    Symbol{"kcal",  energy,      1e3 * joulePerCalorie},
    Symbol{"BTU",   energy,      joulePerBtu},
    Symbol{"kW",    power,       1e3},
    Symbol{"MW",    power,       1e6},
    Symbol{"hp",    power,       550 * footPerMetre * kilogramPerPound * 9.80665},
    Symbol{"L",     volume,      1e-3},
    Symbol{"cP",    viscosity,   1e-3},
};
// clang-format on

/// Units that are usually written as such and not in base units.
constexpr std::array<std::string_view, 26> usualQuotients{
    "mol/s",  "kg/s",   "m3/s",     "m/s",      "m2/s",        "1/s",    "J/mol",  "J/mol/K", "J/kg",
    "J/kg/K", "J/K",    "W/K",      "W/m2",     "W/m/K",       "W/m2/K", "Pa s",   "Pa/m",    "N/m",
    "mol/m3", "m3/mol", "mol/m3/s", "mol/m2/s", "mol/m2/s/Pa", "kg/m3",  "kg/mol", "m3/kg"};

/// Multiplies the unit by a factor such as "m2", "s-1", "K"; a negative `sign` divides.
bool addFactor(std::string_view factor, double sign, UnitOfMeasure& unit) {
    const auto exponentStart = std::min(factor.find_first_of("-0123456789", 1), factor.size());
    const std::string_view symbol = factor.substr(0, exponentStart);
    const std::string_view digits = factor.substr(exponentStart);
    const auto known = std::ranges::find(units, symbol, &Symbol::symbol);
    double exponent = 1;
    if (!digits.empty()) {
        const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (code != std::errc() || end != digits.data() + digits.size() || !std::isfinite(exponent))
            return false;
    }
    if (known == units.end() || known->offset != 0)
        return false;
    for (std::size_t i = 0; i < dimensionCount; ++i)
        unit.exponents[i] += sign * exponent * known->exponents[i];
    unit.factor *= std::pow(known->factor, sign * exponent);
    return true;
}

/// Units that are often written otherwise, and too short to be recognized.
constexpr std::array<std::pair<std::string_view, std::string_view>, 9> otherSymbols{{
    {"C", "degC"},
    {"\u00b0C", "degC"},
    {"F", "degF"},
    {"\u00b0F", "degF"},
    {"R", "degR"},
    {"l", "L"},
    {"hr", "h"},
    {"sec", "s"},
    {"ata", "atm"},
}};

/// The symbol that is probably meant; empty if none is close.
std::string closestSymbol(std::string_view symbol) {
    for (const auto& [other, known] : otherSymbols)
        if (symbol == other)
            return std::string(known);
    std::vector<std::string> symbols;
    for (const Symbol& unit : units) {
        if (isSameName(symbol, unit.symbol))
            return std::string(unit.symbol);
        symbols.emplace_back(unit.symbol);
    }
    return closestName(symbols, symbol);
}

Exponents allExponents(std::span<const double> exponents) {
    Exponents padded{};
    std::ranges::copy(exponents.first(std::min(exponents.size(), dimensionCount)), padded.begin());
    return padded;
}

} // namespace

std::optional<UnitOfMeasure> parseUnit(std::string_view text) {
    const auto known = std::ranges::find(units, text, &Symbol::symbol);
    if (known != units.end())
        return UnitOfMeasure{
            {known->exponents.begin(), known->exponents.end()}, known->factor, known->offset};
    UnitOfMeasure unit{std::vector<double>(dimensionCount)};
    double sign = 1;
    bool any = false;
    for (std::size_t place = 0; place < text.size();) {
        if (text[place] == ' ' || text[place] == '/') {
            sign = text[place] == '/' ? -1 : sign;
            ++place;
            continue;
        }
        const std::size_t end = std::min(text.find_first_of(" /", place), text.size());
        if (!addFactor(text.substr(place, end - place), sign, unit))
            return std::nullopt;
        any = true;
        sign = 1;
        place = end;
    }
    return any ? std::optional(std::move(unit)) : std::nullopt;
}

std::string meantUnit(std::string_view unit) {
    std::string meant;
    while (!unit.empty()) {
        const std::size_t end = std::min(unit.find_first_of(" /"), unit.size());
        const std::string_view factor = unit.substr(0, end);
        if (!factor.empty() && !parseUnit(factor)) {
            const std::string symbol = closestSymbol(factor);
            if (symbol.empty())
                return {};
            meant += symbol;
        } else {
            meant += factor;
        }
        meant += unit.substr(end, 1);
        unit.remove_prefix(std::min(end + 1, unit.size()));
    }
    return parseUnit(meant) ? meant : "";
}

std::string unitText(std::span<const double> exponents) {
    if (std::ranges::all_of(exponents, [](double exponent) { return exponent == 0; }))
        return {};
    const Exponents padded = allExponents(exponents);
    const auto unit = std::ranges::find(units, padded, &Symbol::exponents);
    if (unit != units.end())
        return std::string(unit->symbol);
    for (const std::string_view quotient : usualQuotients)
        if (std::ranges::equal(parseUnit(quotient)->exponents, padded))
            return std::string(quotient);
    std::string text;
    for (std::size_t i = 0; i < dimensionCount; ++i) {
        if (padded[i] == 0)
            continue;
        text.append(text.empty() ? "" : " ").append(units[i].symbol);
        if (padded[i] != 1)
            text += shortNumber(padded[i], 6);
    }
    return text;
}

bool isSameDimension(std::span<const double> left, std::span<const double> right) {
    return allExponents(left) == allExponents(right);
}

bool isDifference(std::span<const double> exponents) {
    return exponents.size() > dimensionCount && exponents[dimensionCount] != 0;
}

std::string unitsOfDimension(std::span<const double> exponents) {
    const Exponents padded = allExponents(exponents);
    std::string names;
    for (const Symbol& unit : units)
        if (unit.exponents == padded)
            names.append(names.empty() ? "" : ", ").append(unit.symbol);
    return names.empty() ? unitText(exponents) : names;
}

} // namespace solvane::host
