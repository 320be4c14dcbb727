/// The calculation material: the unit's private material for one run. All flashes and property calls of the
/// script use it, so that the host's own materials stay unchanged.
#pragma once

#include "CalculationRun.h"

#include <string>
#include <vector>

namespace solvane {

class CPort;

/// Creates the run's calculation material from the first connected port, feeds before products. Without a
/// connected port there is none, and the run continues.
[[nodiscard]] bool createCalculationMaterial(CalculationRun& run, std::wstring& error);

/// Reads the run's compounds and phases from the calculation material. Without one both are empty, and a 1.0
/// material has no phase list.
[[nodiscard]] bool readCompoundsAndPhases(CalculationRun& run, std::wstring& error);

/// The compound identifiers of the material that is connected to a port.
[[nodiscard]] bool readCompoundList(CPort& port, std::vector<std::wstring>& compounds, std::wstring& error);

/// A routine of the 1.1 calculation material, queried on first use and then kept for the run. Null if the
/// material does not have it.
ICapeThermoPropertyRoutine* propertyRoutine(CalculationRun& run);
ICapeThermoEquilibriumRoutine* equilibriumRoutine(CalculationRun& run);

/// The failure of a command that needs a calculation material if there is none.
inline constexpr char noCalculationMaterial[] =
    "No calculation material available; at least one port must be connected";

/// The failure of a command that calculates an overall property if the material cannot.
inline constexpr char noPropertyRoutine[] = "Material object does not expose ICapeThermoPropertyRoutine";

} // namespace solvane
