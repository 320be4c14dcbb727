#include "Quantity.h"

#include <algorithm>
#include <charconv>

namespace solvane::host {

bool parseQuantity(std::string_view text, Quantity& quantity, std::string& error) {
    const std::string quoted = "\"" + std::string(text) + "\"";
    double number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    std::string_view unit = text.substr(static_cast<std::size_t>(end - text.data()));
    unit.remove_prefix(std::min(unit.find_first_not_of(' '), unit.size()));
    if (code != std::errc() || unit.empty()) {
        error = quoted + " is not a number with a unit, such as \"20 bar\" or \"25 degC\"";
        return false;
    }
    const auto measure = parseUnit(unit);
    if (!measure) {
        error = quoted + " has an unknown unit";
        return false;
    }
    quantity = {measure->toSi(number), std::string(unit), *measure};
    return true;
}

bool parseQuantity(std::string_view text, std::span<const double> dimensionality, Quantity& quantity,
                   std::string& error) {
    if (!parseQuantity(text, quantity, error))
        return false;
    if (!isSameDimension(quantity.measure.exponents, dimensionality)) {
        const std::string known = unitsOfDimension(dimensionality);
        error = "\"" + std::string(text) + "\" has the wrong dimension; " +
                (known.empty() ? "expected a plain number" : "expected a unit such as " + known);
        return false;
    }
    if (isDifference(dimensionality))
        quantity.value -= quantity.measure.offset;
    return true;
}

} // namespace solvane::host
