/// The compounds that the sample host's property package knows.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace solvane::host {

/// Constants of one compound; their table names the sources. The ideal-gas heat capacity is
/// `idealGasHeatCapacity[0] + [1] T + [2] T^2 + [3] T^3` in J/mol/K, T in K. Formation properties and the
/// absolute entropy are those of the ideal gas at 298.15 K and 101325 Pa. A missing constant is NaN.
struct Compound {
    std::string_view name;
    std::string_view formula;
    std::string_view casNumber;
    double molecularWeight;     ///< g/mol
    double criticalTemperature; ///< K
    double criticalPressure;    ///< Pa
    double acentricFactor;
    double normalBoilingPoint; ///< K; for carbon dioxide the sublimation temperature
    std::array<double, 4> idealGasHeatCapacity;
    double formationEnthalpy;    ///< J/mol
    double formationGibbsEnergy; ///< J/mol
    double absoluteEntropy;      ///< J/mol/K
    std::string_view iupacName;
    std::string_view smiles;
    double criticalVolume;       ///< m3/mol
    double normalFreezingPoint;  ///< K
    double dipoleMoment;         ///< debye
    double associationParameter; ///< of the correlations of viscosity and conductivity
    double rackettParameter;     ///< of the correlation of liquid volumes
    double parachor;             ///< (mN/m)^(1/4) cm3/mol
    double liquidDensity;        ///< mol/m3, at 298.15 K and 101325 Pa
};

/// The molar mass of a mixture of these mole fractions, kg/mol.
double molarMass(std::span<const Compound* const> compounds, std::span<const double> fractions);

std::span<const Compound> allCompounds();

/// The compound of that name, in any case of letters; null if there is none.
const Compound* findCompound(std::string_view name);

} // namespace solvane::host
