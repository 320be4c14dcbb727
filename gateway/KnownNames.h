/// The names that an argument can have, and which of them a wrong one may have meant.
#pragma once

#include <string>
#include <string_view>

namespace solvane::gateway {

enum class NameKind {
    any,
    feedProperty,
    flashCondition,
    overallProperty,
    singlePhaseProperty,
    twoPhaseProperty,
    compoundConstant,
    temperatureDependent,
    pressureDependent,
    property, ///< of all the kinds above
    unitsOwn  ///< of parameters and reports, which only the unit knows
};

/// The known name of that kind that is closest to a wrong one. Empty if none is close, or if the name is
/// right.
std::string meantName(NameKind kind, std::string_view name);

} // namespace solvane::gateway
