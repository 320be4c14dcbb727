/// What case files and units agree on about parameters: kinds, names, and limits.
#pragma once

#include "CaseModel.h"

#include <string>
#include <string_view>

namespace solvane::host {

/// The word of case files for a kind, as "integer".
std::string_view kindName(ParameterKind kind);

/// A parameter's value, a number with six digits; "?" for none.
std::string valueText(const std::optional<ParameterValue>& value);

/// The unit tells no names apart by the case of their letters.
bool isSameName(std::string_view left, std::string_view right);

/// What is wrong with a value of the parameter's kind: it lies beyond a bound or is not one of the options.
/// Empty where it is a good one.
std::string limitFault(const ModelParameter& parameter, const ParameterValue& value);

} // namespace solvane::host
