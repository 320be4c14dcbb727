/// The texts that show a parameter.
#pragma once

#include "unit/model/CParameter.h"

namespace solvane {

/// "Real", "Integer", "Boolean" or "String".
const wchar_t* kindWord(ParameterKind kind);

/// A value, default or limit; empty where it is not set.
std::wstring valueText(const Variant& value);

/// The cells of the columns name, type, direction, value, default, minimum, maximum and unit of measure.
std::vector<std::wstring> parameterCells(const CParameter& parameter);

} // namespace solvane
