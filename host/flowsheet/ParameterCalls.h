/// The calls on a unit's parameters. They work on the unit itself and on a proxy of it.
#pragma once

#include "CapeOpen.h"
#include "cases/CaseModel.h"
#include "com/Variant.h"

#include <string>
#include <vector>

namespace solvane::host {

/// VT_R8, VT_I4, VT_BOOL or VT_BSTR.
Variant variantOf(const ParameterValue& value);

/// Reads the unit's parameters with their bounds, defaults and values, as far as they have them and the type
/// is known. False with the text of the call that failed.
bool readParameters(ICapeUnit* unit, std::vector<ModelParameter>& parameters, std::string& error);

/// Sets input parameters; a real one accepts whole numbers too. False with a text that names the parameter
/// if the unit lacks it, or if it is an output, of another kind, or limited to other values.
bool setParameters(ICapeUnit* unit, const std::vector<ParameterSetting>& settings, std::string& error);

} // namespace solvane::host
