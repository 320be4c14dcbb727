#include "Quantity.h"

#include <algorithm>
#include <charconv>

namespace solvane::host {

namespace {

/// `known` are units for the message about an unknown one.
bool parseQuantity(std::string_view text, const std::string& known, Quantity& quantity, std::string& error) {
    const std::string quoted = "\"" + std::string(text) + "\"";
    double number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    std::string_view unit = text.substr(static_cast<std::size_t>(end - text.data()));
    unit.remove_prefix(std::min(unit.find_first_not_of(' '), unit.size()));
    if (code == std::errc() && unit.empty()) {
        error = quoted + " has no unit; add one, or leave out the quotes for SI units";
        return false;
    }
    if (code != std::errc()) {
        error = quoted + " is not a number with a unit, such as \"20 bar\" or \"25 degC\"";
        return false;
    }
    if (unit.starts_with(',')) {
        error = quoted + " has a comma; write decimals after a point, as in \"0.5 bar\"";
        return false;
    }
    const auto measure = parseUnit(unit);
    if (!measure) {
        const std::string meant = meantUnit(unit);
        error = quoted + " has an unknown unit; " +
                (meant.empty() ? "expected a unit such as " + known : "did you mean \"" + meant + "\"?");
        return false;
    }
    quantity = {measure->toSi(number), std::string(unit), *measure};
    return true;
}

} // namespace

bool parseQuantity(std::string_view text, Quantity& quantity, std::string& error) {
    return parseQuantity(text, "mol/s, kmol/h, kg/s, t/h, bar, degC", quantity, error);
}

bool parseQuantity(std::string_view text, std::span<const double> dimensionality, Quantity& quantity,
                   std::string& error) {
    const std::string known = unitsOfDimension(dimensionality);
    if (!parseQuantity(text, known, quantity, error))
        return false;
    if (!isSameDimension(quantity.measure.exponents, dimensionality)) {
        const std::string quoted = "\"" + std::string(text) + "\"";
        error = isSameDimension({}, dimensionality)
                    ? quoted +
                          " has a unit, but the quantity has no dimension; a parameter gets it by "
                          "\"dimensionality\": \"" +
                          unitText(quantity.measure.exponents) + "\""
                    : quoted + " has the wrong dimension; " +
                          (known.empty() ? "expected a plain number" : "expected a unit such as " + known);
        return false;
    }
    if (isDifference(dimensionality))
        quantity.value -= quantity.measure.offset;
    return true;
}

} // namespace solvane::host
