/// The constants of the compounds by name.
#pragma once

#include "Compound.h"

#include <span>
#include <string_view>
#include <variant>

namespace solvane::host {

/// A constant is a number in SI units (molecular weights in g/mol) or a text. A missing number is NaN.
struct CompoundConstantRow {
    using Text = std::string_view (*)(const Compound&);
    using Number = double (*)(const Compound&);

    std::string_view name;
    std::variant<Text, Number> value;
};

std::span<const CompoundConstantRow> compoundConstants();

} // namespace solvane::host
