#include "Axis.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "cases/Quantity.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

namespace solvane::host {

namespace {

bool fail(const Axis& axis, const std::string& text, std::string& error) {
    error = axis.variable.name + ": " + text;
    return false;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        std::string_view part = text.substr(0, end);
        part.remove_prefix(std::min(part.find_first_not_of(' '), part.size()));
        parts.emplace_back(part.substr(0, part.find_last_not_of(' ') + 1));
        if (end == text.npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

/// "20 bar" as a number and a unit, which may be empty.
bool readNumber(const Axis& axis, const std::string& text, double& number, std::string& unit,
                std::string& error) {
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (code != std::errc() || !std::isfinite(number))
        return fail(axis, "\"" + text + "\" is not a number", error);
    unit = std::string(end, text.data() + text.size());
    unit.erase(0, unit.find_first_not_of(' '));
    return true;
}

/// A number in the axis's unit, in SI units.
bool readReal(const Axis& axis, const std::string& text, double& number, std::string& error) {
    std::string rest;
    if (!readNumber(axis, text, number, rest, error))
        return false;
    if (!rest.empty())
        return fail(axis, "\"" + text + "\" is not a number", error);
    if (axis.unit.empty())
        return true;
    Quantity quantity;
    std::string fault;
    if (!parseQuantity(text + " " + axis.unit,
                       axis.isMassFlow ? std::span<const double>(massFlowDimension)
                                       : axis.variable.values.dimensionality,
                       quantity, fault))
        return fail(axis, fault, error);
    number = quantity.value;
    return true;
}

/// The unit of the axis; the SI unit if the user gives none.
bool takeUnit(const std::string& unit, Axis& axis, std::string& error) {
    const ModelParameter& values = axis.variable.values;
    axis.unit = unit.empty() ? unitText(values.dimensionality) : unit;
    if (axis.variable.quantity == FeedQuantity::flow)
        if (const auto measure = parseUnit(axis.unit))
            axis.isMassFlow = isSameDimension(measure->exponents, massFlowDimension);
    double number = 0;
    return readReal(axis, "1", number, error);
}

/// Reads numbers that all have the unit of the first.
bool readNumbers(const std::vector<std::string>& parts, Axis& axis, std::vector<double>& numbers,
                 std::string& error) {
    std::string first;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        std::string unit;
        if (!readNumber(axis, parts[i], numbers.emplace_back(), unit, error))
            return false;
        if (i == 0)
            first = unit;
        else if (unit != first)
            return fail(axis, "\"" + parts[i] + "\" has another unit than \"" + parts[0] + "\"", error);
    }
    return takeUnit(first, axis, error);
}

bool readRange(std::vector<std::string> parts, Axis& axis, Range& range, std::string& error) {
    axis.isLogarithmic = range.isLogarithmic = parts.back() == "log";
    if (range.isLogarithmic)
        parts.pop_back();
    if (parts.size() < 2 || parts.size() > 3)
        return fail(axis, "expected a range FIRST:LAST:COUNT, such as \"2 bar:20 bar:10\", or with \":log\"",
                    error);
    if (parts.size() == 3) {
        const auto [end, code] =
            std::from_chars(parts[2].data(), parts[2].data() + parts[2].size(), range.count);
        if (code != std::errc() || end != parts[2].data() + parts[2].size() || range.count < 2)
            return fail(axis, "the count \"" + parts[2] + "\" is not a whole number from 2", error);
        parts.pop_back();
    }
    std::vector<double> ends;
    if (!readNumbers(parts, axis, ends, error))
        return false;
    range.first = ends[0];
    range.last = ends[1];
    if (range.first == range.last)
        return fail(axis, "the range starts and ends at the same value", error);
    if (range.isLogarithmic && !(range.first > 0 && range.last > 0))
        return fail(axis, "a logarithmic range needs numbers above 0", error);
    return true;
}

} // namespace

bool isNumeric(const Axis& axis) {
    const ParameterKind kind = axis.variable.values.kind;
    return kind == ParameterKind::real || kind == ParameterKind::integer;
}

double Range::at(double fraction) const {
    if (fraction == 0)
        return first;
    if (fraction == 1)
        return last;
    return isLogarithmic ? first * std::pow(last / first, fraction) : first + (last - first) * fraction;
}

bool readLevels(std::string_view text, Axis& axis, Levels& levels, std::string& error) {
    const std::vector<std::string> parts = split(text, ':');
    if (isNumeric(axis) && parts.size() > 1)
        return readRange(parts, axis, levels.range.emplace(), error);
    levels.texts = split(text, ',');
    if (!isNumeric(axis))
        return true;
    std::vector<double> numbers;
    if (!readNumbers(levels.texts, axis, numbers, error))
        return false;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (!numberText(axis, numbers[i], levels.texts[i], error))
            return false;
    return true;
}

bool spread(const Axis& axis, const Range& range, std::vector<std::string>& texts, std::string& error) {
    if (range.count == 0)
        return fail(axis, "the range needs a count: FIRST:LAST:COUNT", error);
    for (std::size_t i = 0; i < range.count; ++i) {
        const double fraction = static_cast<double>(i) / static_cast<double>(range.count - 1);
        if (!numberText(axis, range.at(fraction), texts.emplace_back(), error))
            return false;
    }
    return true;
}

bool numberText(const Axis& axis, double number, std::string& text, std::string& error) {
    text = exactNumber(number);
    if (axis.variable.values.kind != ParameterKind::integer)
        return true;
    if (number != std::round(number))
        return fail(axis, text + " is not a whole number", error);
    text = fixedNumber(number, 0);
    return true;
}

bool readTitle(const std::vector<Variable>& variables, const std::string& title, Axis& axis,
               std::string& error) {
    if (findVariable(variables, title, axis.variable, error))
        return !isNumeric(axis) || takeUnit({}, axis, error);
    const std::size_t open = title.rfind(" (");
    if (open == title.npos || !title.ends_with(')'))
        return false;
    return findVariable(variables, title.substr(0, open), axis.variable, error) &&
           takeUnit(title.substr(open + 2, title.size() - open - 3), axis, error);
}

bool readValue(const Axis& axis, const std::string& text, ParameterValue& value, std::string& error) {
    const ModelParameter& values = axis.variable.values;
    switch (values.kind) {
    case ParameterKind::real:
        if (!readReal(axis, text, value.emplace<double>(), error))
            return false;
        break;
    case ParameterKind::integer: {
        const char* const end = text.data() + text.size();
        const auto [stop, code] = std::from_chars(text.data(), end, value.emplace<std::int32_t>());
        if (code != std::errc() || stop != end)
            return fail(axis, "\"" + text + "\" is not a whole number of 32 bits", error);
        break;
    }
    case ParameterKind::boolean:
        if (text != "true" && text != "false")
            return fail(axis, "\"" + text + "\" is neither true nor false", error);
        value = text == "true";
        break;
    case ParameterKind::text:
        value = text;
        break;
    }
    const std::string fault = limitFault(values, value);
    return fault.empty() ||
           fail(axis, text + (axis.unit.empty() ? "" : " " + axis.unit) + ": " + fault, error);
}

} // namespace solvane::host
