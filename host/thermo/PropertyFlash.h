/// Flashes where a property of the whole mixture is given: enthalpy, entropy, internal energy or volume.
#pragma once

#include "MolarProperties.h"
#include "PhaseSplit.h"

#include <string>

namespace solvane::host {

/// The property of the whole mixture: that of its phases by their fractions.
double overallProperty(const Mixture& mixture, const Equilibrium& state, double MolarProperties::*property);

struct GivenProperty {
    double MolarProperties::*property;
    double value;
};

// Of several states that have the value, each flash finds the first that its steps show. False where none has
// it; `error` then says so but for the property's name and value, with which a message begins.

/// The temperature is sought, upwards; the property rises with it.
bool flashAtPressure(const Mixture& mixture, double pressure, const GivenProperty& given, Equilibrium& result,
                     std::string& error);

/// The pressure is sought, upwards.
bool flashAtTemperature(const Mixture& mixture, double temperature, const GivenProperty& given,
                        Equilibrium& result, std::string& error);

/// Temperature and pressure are sought among the states of that vapour fraction, temperature upwards.
bool flashAtVaporFraction(const Mixture& mixture, double vaporFraction, const GivenProperty& given,
                          Equilibrium& result, std::string& error);

} // namespace solvane::host
