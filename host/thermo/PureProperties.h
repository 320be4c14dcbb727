/// Properties of the pure compounds that depend on temperature or on pressure alone.
#pragma once

#include "Compound.h"
#include "Dual.h"

#include <span>
#include <string_view>

namespace solvane::host {

/// What the property depends on.
enum class PureArgument { temperature, pressure };

/// The value and its derivative, in SI units on a mole basis. NaN if there is none: properties of
/// vapour and liquid together end at the critical point.
struct PurePropertyRow {
    std::string_view name;
    PureArgument argument;
    Dual (*value)(const Compound& compound, double argument);
};

/// Saturated states are those of the equation of state. Viscosities and conductivities of the vapour are
/// those of the dilute gas; the liquid's are at saturation, as are its heat capacity and volume.
std::span<const PurePropertyRow> pureProperties();

/// Temperature of boiling, K, at a pressure in Pa.
Dual boilingPoint(const Compound& compound, double pressure);

/// J/mol.
Dual heatOfVaporization(const Compound& compound, double temperature);

} // namespace solvane::host
