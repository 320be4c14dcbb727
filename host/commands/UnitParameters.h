#pragma once

#include "studies/Variable.h"

#include <string>

namespace solvane::host {

/// Reads the parameters of all units of a case. Those of a model file are known to the unit only, which is
/// created for a moment. False with a text that names the unit.
[[nodiscard]] bool readUnitParameters(const Case& flowsheet, UnitParameters& parameters, std::string& error);

} // namespace solvane::host
