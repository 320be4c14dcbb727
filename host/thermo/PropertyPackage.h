/// The sample host's thermodynamics: Peng-Robinson with ideal-gas heat capacities.
///
/// Units are SI on a mole basis throughout: K, Pa, mol, J/mol, J/mol/K, m3/mol. Compositions are mole
/// fractions in the package's compound order; the package normalises them, and zeros are allowed.
/// Temperatures lie within 50 K and 3000 K, pressures within 0 and 1e9 Pa.
#pragma once

#include "Compound.h"
#include "PhaseProperty.h"
#include "PureProperties.h"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace solvane::host {

/// Two phases and what they consist of.
struct TwoPhases {
    std::array<Phase, 2> phases;
    std::array<std::span<const double>, 2> compositions;
};

struct PhaseState {
    Phase phase;
    double fraction; ///< moles of the phase per mole of the mixture
    std::vector<double> composition;
};

/// The phases at equilibrium, vapour first: one, or two. A flash at a given vapour fraction always gives two;
/// at a bubble or dew point one of them has the fraction 0. A phase that is alone is a vapour if its volume
/// is greater than the equation's critical volume of the mixture (about 3.95 b), otherwise a liquid. There is
/// no second liquid.
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
    /// The compounds must outlive the package, as those of allCompounds() do.
    explicit PropertyPackage(std::vector<const Compound*> compounds);

    std::span<const Compound* const> compounds() const { return compounds_; }

    /// Values of `property` for the phase at T and P: one for the mixture, or one per compound. A derivative
    /// to temperature or pressure has as many; one to moles or fractions has them for the first compound's
    /// amount, then for the second's, and so on. If the equation of state has only one root, both phases
    /// take it. False with a text for values out of range.
    bool phaseProperty(PhaseProperty property, Phase phase, double temperature, double pressure,
                       std::span<const double> composition, std::vector<double>& values, std::string& error,
                       Derivative derivative = Derivative::none) const;

    /// Values of a property of two phases at the same T and P, with derivatives laid out as those of a single
    /// phase: those to the first phase's amounts, then those to the second's.
    bool twoPhaseProperty(TwoPhaseProperty property, const TwoPhases& phases, double temperature,
                          double pressure, std::vector<double>& values, std::string& error,
                          Derivative derivative = Derivative::none) const;

    /// A property of each pure compound at the temperature or pressure that it depends on, or its derivative
    /// to that. NaN for a compound that has none there. False with a text for values out of range.
    bool pureProperty(const PurePropertyRow& property, double argument, std::vector<double>& values,
                      std::string& error, bool derivative = false) const;

    /// Whether there is a flash at these two conditions, in either order.
    static bool canFlash(FlashVariable first, FlashVariable second);

    /// Flashes the composition at two of temperature, pressure and vapour fraction, or at one of them and a
    /// property of the whole mixture, in either order. Of several states that have the values, it is the one
    /// of the lowest pressure where the temperature is given, that of the lowest temperature where the vapour
    /// fraction and a property are. The result has exactly the stated temperature, pressure or vapour
    /// fraction. False with a text for a pair that is not supported, for values out of range, and if there is
    /// no solution.
    bool flash(std::span<const double> composition, const FlashCondition& first, const FlashCondition& second,
               Equilibrium& result, std::string& error) const;

private:
    bool normalize(std::span<const double> composition, std::vector<double>& fractions,
                   std::string& error) const;

    std::vector<const Compound*> compounds_;
};

} // namespace solvane::host
