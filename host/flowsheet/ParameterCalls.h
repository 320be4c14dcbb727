/// The calls on a unit's parameters. They serve for the unit itself and for a proxy of it alike.
#pragma once

#include "CapeOpen.h"
#include "cases/CaseModel.h"
#include "com/Variant.h"

#include <string>
#include <vector>

namespace solvane::host {

/// VT_R8, VT_I4, VT_BOOL or VT_BSTR.
Variant variantOf(const ParameterValue& value);

/// The unit's parameters with what they tell of themselves: a bound or a default that it has not is left
/// out, and so is a value of no known type. False with the text of the call that failed.
bool readParameters(ICapeUnit* unit, std::vector<ModelParameter>& parameters, std::string& error);

/// Gives input parameters their values; a real one takes whole numbers too. False with a text that names the
/// parameter where the unit has none of that name, or where it is an output, of another kind, or limited to
/// other values.
bool setParameters(ICapeUnit* unit, const std::vector<ParameterSetting>& settings, std::string& error);

} // namespace solvane::host
