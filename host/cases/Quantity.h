/// Quantities in case files: a number in SI units, or a text such as "20 bar".
#pragma once

#include "CasePlace.h"
#include "UnitOfMeasure.h"

#include <span>
#include <string>
#include <string_view>

namespace solvane::host {

/// A quantity as it was written; a number has the unit "".
struct Quantity {
    double value = 0; ///< SI
    std::string unit{};
    UnitOfMeasure measure{};
};

/// Reads a number and a unit, such as "25 degC". False with a text if it is none, or the unit is unknown.
bool parseQuantity(std::string_view text, Quantity& quantity, std::string& error);

/// Reads a text as the value, in SI units, of a quantity with this dimensionality. False with a text.
bool parseQuantity(std::string_view text, std::span<const double> dimensionality, double& value,
                   std::string& error);

} // namespace solvane::host
