/// Quantities with units, such as "20 bar".
#pragma once

#include "UnitOfMeasure.h"

#include <span>
#include <string>
#include <string_view>

namespace solvane::host {

struct Quantity {
    double value = 0; ///< SI
    std::string unit{};
    UnitOfMeasure measure{};
};

/// Reads a number and a unit, such as "25 degC". False with a text if it is none, or the unit is unknown.
bool parseQuantity(std::string_view text, Quantity& quantity, std::string& error);

/// The same; the quantity must have this dimensionality. A difference has no zero of its own.
bool parseQuantity(std::string_view text, std::span<const double> dimensionality, Quantity& quantity,
                   std::string& error);

} // namespace solvane::host
