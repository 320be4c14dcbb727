/// The units of measure of tables.
#pragma once

#include "cases/CaseModel.h"

#include <array>
#include <string>
#include <string_view>

namespace solvane::host {

/// Each can be parsed by `parseUnit`.
struct TableUnits {
    std::string temperature = "K";
    std::string pressure = "bar";
    std::string flow = "mol/s";
    std::string massFlow = "kg/s";
    std::string enthalpy = "J/mol";
    std::string power = "kW";
};

/// The names of the systems of units that a user can choose.
inline constexpr std::array<std::string_view, 3> unitSystems{"si", "metric", "field"};

/// The units of one of these systems.
TableUnits unitsOfSystem(std::string_view system);

/// The usual units, with those in which the case's feeds are stated: of each quantity the first.
TableUnits unitsOfCase(const Case& flowsheet);

/// A value in SI units, in this unit.
double inUnit(double value, const std::string& unit);

/// The table's unit for a parameter's dimensionality, but never a gauge pressure, since it may be a
/// difference; the SI unit if the table has none or the parameter is marked as a difference, and empty for a
/// plain number.
std::string unitOfParameter(const TableUnits& units, const std::vector<double>& dimensionality);

} // namespace solvane::host
