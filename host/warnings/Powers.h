/// The heats and powers that a unit's parameters show, of either sign: scripts count what is taken up or
/// given off.
#pragma once

#include "UnitReview.h"

#include <span>
#include <vector>

namespace solvane::host {

struct Power {
    const ModelParameter* parameter;
    double value; ///< W
};

/// Those of all parameters that have a number, in their order.
std::vector<Power> powersOf(const UnitResult& unit);

/// Whether it is a heat by its name; otherwise it may be the power of a machine.
bool isNamedHeat(const Power& power);

/// Whether the gain is, within the tolerance in W, a sum of powers, each added, subtracted or left out.
bool isSumOf(std::span<const Power> powers, double gain, double tolerance);

/// The efficiencies of a machine, below 1, that inputs state by name; not those of its driver.
std::vector<double> efficienciesOf(const UnitResult& unit);

/// Whether the name is that of a driver and its losses.
bool isOfDriver(const ModelParameter& parameter);

/// What the products carry more than the feeds.
double gain(const Flows& flows);

/// Whether the enthalpies are kept, or change by powers that the parameters show.
bool isBalanced(const UnitReview& review);

/// The heat that the streams carry, W: a measure for errors of enthalpies, whose zero is arbitrary.
double heatOf(std::span<const StreamResult* const> streams);

/// "1234.5 W"
std::string watts(double value);

} // namespace solvane::host
