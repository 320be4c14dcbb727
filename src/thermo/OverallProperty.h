/// An overall property of a material, calculated as the sum over its present phases of phase fraction times
/// the phase's property, since hosts need not provide it directly.
#pragma once

#include "CalculationRun.h"

#include <string>

namespace solvane {

/// The property `name` on a mole basis. Skips a phase whose fraction is 0; without present phases the
/// property is 0. Of the run, it uses only the one-element arrays.
[[nodiscard]] bool overallFromPhases10(CalculationRun& run, ICapeThermoMaterialObject& material,
                                       const std::string& name, double& result, std::string& error);
[[nodiscard]] bool overallFromPhases11(CalculationRun& run, ICapeThermoMaterial& material,
                                       ICapeThermoPropertyRoutine& routine, const std::string& name,
                                       double& result, std::string& error);

} // namespace solvane
