/// The properties that a script may ask for, by name, with their units. Built on first use.
#pragma once

#include "StringMap.h"

#include <cstdint>

namespace solvane {

/// A property of one phase. The flags are 0 or 1.
struct SinglePhaseProperty {
    const char* unit;
    std::int32_t molar;           ///< read on a mole basis rather than without one
    std::int32_t overall;         ///< applies to a whole stream; no command uses this
    std::int32_t molarDerivative; ///< a derivative by moles has the property's own unit
};

/// Property name to unit; "" for a dimensionless property.
using UnitMap = StringMap<const char*>;

const StringMap<SinglePhaseProperty>& singlePhaseProperties();
const UnitMap& twoPhaseUnits();
const UnitMap& compoundConstantUnits();
const UnitMap& temperatureDependentUnits();
const UnitMap& pressureDependentUnits();

} // namespace solvane
