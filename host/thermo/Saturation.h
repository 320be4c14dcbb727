/// Boiling of a pure compound.
#pragma once

#include "Compound.h"

#include <optional>

namespace solvane::host {

/// The pressure, Pa, at which vapour and liquid coexist; empty from the critical temperature on.
std::optional<double> vaporPressure(const Compound& compound, double temperature);

/// The temperature, K, at which vapour and liquid coexist; empty from the critical pressure on.
std::optional<double> boilingTemperature(const Compound& compound, double pressure);

} // namespace solvane::host
