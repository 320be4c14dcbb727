/// Names, bounds and texts of flash conditions.
#pragma once

#include "MolarProperties.h"
#include "PropertyPackage.h"

#include <sstream>

namespace solvane::host {

/// The package's bounds, K and Pa.
inline constexpr double lowestTemperature = 50;
inline constexpr double highestTemperature = 3000;
inline constexpr double highestPressure = 1e9;

struct FlashVariableRow {
    FlashVariable variable;
    const char* name;
    double lowest;
    double highest;
    const char* unit;                   ///< after a blank, as " K"; empty for a fraction
    double MolarProperties::* property; ///< of the overall mixture; null for the others
};

const FlashVariableRow& rowOf(FlashVariable variable);

/// False with a text unless the value is a number within its variable's bounds.
bool checkCondition(const FlashCondition& condition, std::string& error);

/// A message from parts.
template <typename... Parts>
std::string text(const Parts&... parts) {
    std::ostringstream stream;
    (stream << ... << parts);
    return stream.str();
}

} // namespace solvane::host
