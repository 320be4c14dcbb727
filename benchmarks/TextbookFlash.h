/// Flashes as a textbook writes them down, what the property package's are measured against: the same
/// equation and heat capacities, no derivatives, no stability test, no stored parts.
#pragma once

#include "Compound.h"

#include <functional>
#include <vector>

namespace solvane {

class TextbookFlash {
public:
    struct State {
        double temperature; ///< K
        double pressure;    ///< Pa
        double vaporFraction;
        std::vector<double> vapor;
        std::vector<double> liquid;
    };
    using Property = std::function<double(const State&)>;

    TextbookFlash(std::vector<const host::Compound*> compounds, std::vector<double> composition)
        : compounds_(std::move(compounds)), composition_(std::move(composition)) {}

    /// Successive substitution of K values (J. M. Smith, H. C. Van Ness, M. M. Abbott, Introduction to
    /// Chemical Engineering Thermodynamics, chapter 14), with Wilson's as the start. A mixture that is one
    /// phase by its K values is that phase.
    State atTemperatureAndPressure(double temperature, double pressure) const;

    /// Searches for a temperature or a pressure by false position (the Illinois variant), within bounds
    /// between which the mixture has two phases.
    State atPressure(double pressure, const Property& property, double value, double lowest,
                     double highest) const;
    State atTemperature(double temperature, const Property& property, double value, double lowest,
                        double highest) const;

    double enthalpy(const State& state) const; ///< of the whole mixture, J/mol
    double entropy(const State& state) const;  ///< of the whole mixture, J/mol/K

private:
    struct Phase {
        double a, aSlope; ///< and its derivative to temperature
        double b;
        double z;
        std::vector<double> logCoefficients;
    };
    Phase phase(double temperature, double pressure, const std::vector<double>& x, bool isVapor) const;
    double phaseFraction(const std::vector<double>& k) const;

    std::vector<const host::Compound*> compounds_;
    std::vector<double> composition_;
};

} // namespace solvane
