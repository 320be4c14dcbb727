/// Flashes of a composition at two constraints, on materials of either generation.
#pragma once

#include "FlashConstraints.h"

#include <array>
#include <string>
#include <vector>

namespace solvane {

class CPort;
struct CalculationRun;

/// A flash that the script asks for.
struct FlashRequest {
    std::vector<double> composition; ///< mole fractions, in the order of the run's compounds
    std::array<FlashConstraint, 2> constraints;
};

/// Flashes the calculation material, which keeps what was set before a failure.
[[nodiscard]] bool flashCalculationMaterial(CalculationRun& run, const FlashRequest& request,
                                            std::string& error);

/// Sets a product, as the script stated it, on the material connected to its port, and flashes it.
[[nodiscard]] bool flashProductPort(CPort& port, std::string& error);

} // namespace solvane
