/// The rules on parameters that case files and units share: kinds, names and limits.
#pragma once

#include "CaseModel.h"

#include <span>
#include <string>
#include <string_view>

namespace solvane::host {

/// The kind as case files spell it, such as "integer".
std::string_view kindName(ParameterKind kind);

/// A parameter's value, a number with six digits; "?" for no value.
std::string valueText(const std::optional<ParameterValue>& value);

/// Whether the parameter has a value; a NaN is none.
bool isSet(const ModelParameter& parameter);

/// Like the unit, ignores the case of letters.
bool isSameName(std::string_view left, std::string_view right);

/// Whether one of the words, in lower case, stands in the name.
bool hasWord(std::string_view name, std::span<const std::string_view> words);

/// The fault of a value of the parameter's kind: it lies beyond a bound or is not one of the options. Empty
/// for a valid one.
std::string limitFault(const ModelParameter& parameter, const ParameterValue& value);

} // namespace solvane::host
