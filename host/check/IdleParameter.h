#pragma once

#include "cases/CaseModel.h"

#include <string>

namespace solvane::host {

/// What to look for where no result changes with an input, by what the script does with its name.
std::string remedyOfIdleParameter(const UnitCase& unit, const std::string& parameter);

} // namespace solvane::host
