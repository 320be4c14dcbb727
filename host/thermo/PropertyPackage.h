/// The sample host's thermodynamics: Peng-Robinson with ideal-gas heat capacities.
///
/// Units are SI on a mole basis throughout: K, Pa, mol, J/mol, J/mol/K, m3/mol. Compositions are mole
/// fractions in the package's compound order; they are normalised here, and zeros are welcome. Temperatures
/// lie within 50 K and 3000 K, pressures within 0 and 1e9 Pa.
#pragma once

#include "Compound.h"

#include <span>
#include <string>
#include <vector>

namespace solvane::host {

enum class Phase { vapor, liquid };

/// What a single phase can be asked for. Enthalpy and entropy are zero for each pure compound as ideal gas at
/// 298.15 K and 101325 Pa in the "NF" forms; the "F" forms add the enthalpy and the entropy of formation of
/// that ideal gas from the elements, so that enthalpyF - T entropyF there is the Gibbs energy of formation.
/// Enthalpy, entropy and internal energy without either are those of the "NF" forms.
enum class PhaseProperty {
    enthalpy,
    enthalpyF,
    enthalpyNF,
    entropy,
    entropyF,
    entropyNF,
    internalEnergy,
    volume,
    fugacityCoefficient,
    logFugacityCoefficient, ///< natural logarithm
    fugacity,
};

struct PhaseState {
    Phase phase;
    double fraction; ///< moles of the phase per mole of the mixture
    std::vector<double> composition;
};

/// The phases at equilibrium, vapour first: one, or two. A flash at a given vapour fraction always gives two;
/// at a bubble or dew point one of them has the fraction 0. A phase that is alone is a vapour if its volume
/// is greater than the equation's critical volume of the mixture (about 3.95 b), else a liquid. There is no
/// second liquid.
struct Equilibrium {
    double temperature = 0;
    double pressure = 0;
    std::vector<PhaseState> phases;
};

/// One of the two conditions of a flash.
enum class FlashVariable {
    temperature,
    pressure,
    vaporFraction, ///< mole fraction of the mixture that is vapour
    enthalpy,
    enthalpyF,
    enthalpyNF,
    entropy,
    entropyF,
    entropyNF,
    internalEnergy,
    volume,
};

struct FlashCondition {
    FlashVariable variable;
    double value;
};

class PropertyPackage {
public:
    /// The compounds outlive the package, as those of allCompounds() do.
    explicit PropertyPackage(std::vector<const Compound*> compounds);

    std::span<const Compound* const> compounds() const { return compounds_; }

    /// Values of `property` for the phase at T and P: one for a mixture property, one a compound for the
    /// fugacity properties. Where the equation of state has one root only, both phases take it. False with a
    /// text for values out of range.
    bool phaseProperty(PhaseProperty property, Phase phase, double temperature, double pressure,
                       std::span<const double> composition, std::vector<double>& values,
                       std::string& error) const;

    /// Flashes the composition at temperature and pressure, at pressure and an enthalpy or entropy, or at a
    /// vapour fraction and temperature or pressure. The order of the conditions does not matter. False with a
    /// text for a pair that is not supported, for values out of range, and where there is no solution.
    bool flash(std::span<const double> composition, const FlashCondition& first, const FlashCondition& second,
               Equilibrium& result, std::string& error) const;

private:
    bool normalize(std::span<const double> composition, std::vector<double>& fractions,
                   std::string& error) const;

    std::vector<const Compound*> compounds_;
};

} // namespace solvane::host
