/// The properties of phases.
#pragma once

#include <span>
#include <string_view>

namespace solvane::host {

enum class Phase { vapor, liquid };

/// The properties of a single phase. Enthalpies and energies are in J/mol, entropies and heat capacities
/// in J/mol/K, volumes in m3/mol; the rest without a unit is dimensionless. Enthalpy and entropy are
/// zero for each pure compound as ideal gas at 298.15 K and 101325 Pa in the "NF" forms; the "F" forms add
/// the enthalpy and the entropy of formation of that ideal gas from the elements, so that enthalpyF - T
/// entropyF there is the Gibbs energy of formation. Enthalpy, entropy and the energies without either are
/// those of the "NF" forms. Excess properties and activities are taken against the pure compounds in the same
/// phase at the same temperature and pressure.
enum class PhaseProperty {
    enthalpy,
    enthalpyF,
    enthalpyNF,
    entropy,
    entropyF,
    entropyNF,
    internalEnergy,
    gibbsEnergy,
    helmholtzEnergy,
    volume,
    heatCapacityCp,
    heatCapacityCv,
    excessEnthalpy,
    excessEntropy,
    excessGibbsEnergy,
    excessHelmholtzEnergy,
    excessInternalEnergy,
    excessVolume,
    density, ///< mol/m3
    compressibilityFactor,
    compressibility,         ///< isothermal, 1/Pa
    speedOfSound,            ///< m/s
    jouleThomsonCoefficient, ///< K/Pa
    molecularWeight,         ///< g/mol
    viscosity,               ///< Pa s
    thermalConductivity,     ///< W/m/K
    fugacityCoefficient,
    logFugacityCoefficient, ///< natural logarithm
    fugacity,               ///< Pa
    logFugacity,            ///< of the fugacity in Pa
    activity,
    activityCoefficient,
};

struct PhasePropertyRow {
    PhaseProperty property;
    std::string_view name;
    bool perCompound; ///< one value per compound, otherwise one for the phase
    bool molar;       ///< per mole, so that the derivative to moles is the partial molar property
};

std::span<const PhasePropertyRow> phaseProperties();

enum class TwoPhaseProperty {
    kvalue,         ///< fraction in the first phase over that in the second where they are in equilibrium
    logKvalue,      ///< natural logarithm
    surfaceTension, ///< N/m, in either order of the phases
};

/// The variable of a derivative, all else constant: for `moles` the amounts of one mole in all, for
/// `molFraction` the fractions as if each could change alone.
enum class Derivative { none, temperature, pressure, moles, molFraction };

} // namespace solvane::host
