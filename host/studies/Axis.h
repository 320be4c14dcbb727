/// A variable of a study and the values that the user gives it.
#pragma once

#include "Variable.h"

#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// A variable and the unit of measure in which the study states it.
struct Axis {
    Variable variable{};
    std::string unit{};      ///< empty for a plain number or a text
    bool isMassFlow = false; ///< a flow in kg/s, not in mol/s
    bool isLogarithmic = false;

    /// The heading of its column.
    std::string title() const { return unit.empty() ? variable.name : variable.name + " (" + unit + ")"; }
};

/// Whether the values are numbers, which form ranges.
bool isNumeric(const Axis& axis);

/// Values from `first` to `last`, in the axis's unit.
struct Range {
    double first = 0;
    double last = 0;
    std::size_t count = 0; ///< 0 if it is not given
    bool isLogarithmic = false;

    /// The value at a fraction of the way; exactly the first at 0 and the last at 1.
    double at(double fraction) const;
};

/// What the user gives an axis: a list, or a range.
struct Levels {
    std::vector<std::string> texts{}; ///< in the axis's unit
    std::optional<Range> range{};
};

/// Reads "2 bar:20 bar:10", "1:100:7:log" or "10,50", and the unit of the axis from it. The names of texts
/// and the words true and false form lists only. False with a text that says what is wrong.
[[nodiscard]] bool readLevels(std::string_view text, Axis& axis, Levels& levels, std::string& error);

/// The values of a range with a count, in equal steps.
[[nodiscard]] bool spread(const Axis& axis, const Range& range, std::vector<std::string>& texts,
                          std::string& error);

/// The text of a number on the axis, as whole numbers have it.
[[nodiscard]] bool numberText(const Axis& axis, double number, std::string& text, std::string& error);

/// Splits "outlet pressure (bar)", the title of a column, into a variable and its unit.
[[nodiscard]] bool readTitle(const std::vector<Variable>& variables, const std::string& title, Axis& axis,
                             std::string& error);

/// The value of a text in the axis's unit, in SI units, checked against the variable's kind and limits.
[[nodiscard]] bool readValue(const Axis& axis, const std::string& text, ParameterValue& value,
                             std::string& error);

} // namespace solvane::host
