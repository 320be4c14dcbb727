/// The equilibrium state of a material as a reply. Calculates nothing: reads the material's current state,
/// and all of it before it writes the first field.
///
/// Both replies: int32 p or -p, where p is the number of present phases; the phases, see below; p doubles,
/// the phase fractions (mole); nComp times p doubles, for each compound its mole fraction in each phase;
/// double temperature, K; double pressure, Pa.
#pragma once

#include "CalculationRun.h"

#include <string>

namespace solvane {

class ReplyWriter;

/// Identifies a 1.0 material's phases by name: -p, and p texts.
[[nodiscard]] bool writeEquilibrium10(const CalculationRun& run, ICapeThermoMaterialObject& material,
                                      ReplyWriter& reply, std::string& error);

/// Identifies a 1.1 material's phases by their place in the run's phase names: p, and p int32 from 1.
[[nodiscard]] bool writeEquilibrium11(const CalculationRun& run, ICapeThermoMaterial& material,
                                      ReplyWriter& reply, std::string& error);

} // namespace solvane
