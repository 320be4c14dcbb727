/// An overall property of a material, worked out as the sum over its present phases of phase fraction times
/// the phase's property, since hosts need not know it directly.
#pragma once

#include "CalculationRun.h"

#include <string>

namespace solvane {

/// The property `name` on a mole basis. A phase whose fraction is 0 is neither calculated nor read; with no
/// present phase the property is 0. Only the run's one-element arrays are used.
[[nodiscard]] bool overallFromPhases10(CalculationRun& run, ICapeThermoMaterialObject& material,
                                       const std::string& name, double& result, std::string& error);
[[nodiscard]] bool overallFromPhases11(CalculationRun& run, ICapeThermoMaterial& material,
                                       ICapeThermoPropertyRoutine& routine, const std::string& name,
                                       double& result, std::string& error);

} // namespace solvane
