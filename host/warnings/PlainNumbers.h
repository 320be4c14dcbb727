/// Numbers that a case states without a unit, and that look like those of another unit.
#pragma once

#include "results/RunResults.h"

#include <span>
#include <vector>

namespace solvane::host {

/// Adds the feeds with such temperatures and pressures.
void addFeedWarnings(const Case& flowsheet, std::vector<Warning>& warnings);

/// Adds the inputs of a unit with such values. Those of a model file are in SI units, unless the case sets
/// them. `streams` has the states of the feeds, as far as they are known.
void addParameterWarnings(const UnitCase& unit, const UnitResult& result,
                          std::span<const StreamResult> streams, std::vector<Warning>& warnings);

/// Whether the parameter is the temperature of a stream or vessel by its name and dimension, such as "T2".
bool isTemperature(const ModelParameter& parameter);

/// Likewise for the pressure.
bool isPressure(const ModelParameter& parameter);

} // namespace solvane::host
