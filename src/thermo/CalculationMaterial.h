/// The calculation material: the unit's private material for one run, which all flashes and property calls of
/// the script go to, so that the host's own materials stay as they are.
#pragma once

#include "CalculationRun.h"

#include <string>
#include <vector>

namespace solvane {

class CPort;

/// Makes the run's calculation material from the first connected port, feeds before products. Without a
/// connected port there is none, and the run goes on.
[[nodiscard]] bool createCalculationMaterial(CalculationRun& run, std::wstring& error);

/// Reads the run's compounds and phases from the calculation material. Without one both are empty, and a 1.0
/// material has no phase list.
[[nodiscard]] bool readCompoundsAndPhases(CalculationRun& run, std::wstring& error);

/// The compound identifiers of the material that is connected to a port.
[[nodiscard]] bool readCompoundList(CPort& port, std::vector<std::wstring>& compounds, std::wstring& error);

/// A routine of the 1.1 calculation material, asked for on first need and then kept for the run. Null where
/// the material has none.
ICapeThermoPropertyRoutine* propertyRoutine(CalculationRun& run);
ICapeThermoEquilibriumRoutine* equilibriumRoutine(CalculationRun& run);

/// What a command answers that needs a calculation material where there is none.
inline constexpr char noCalculationMaterial[] =
    "No calculation material available; at least one port must be connected";

/// What a command answers that calculates an overall property, where the material can't.
inline constexpr char noPropertyRoutine[] = "Material object does not expose ICapeThermoPropertyRoutine";

} // namespace solvane
