/// Flashes at a given property of the whole mixture: enthalpy, entropy, internal energy or volume.
#pragma once

#include "PathSearch.h"

#include <string>

namespace solvane::host {

// If several states have the value, each flash finds the first that its steps show. False if none has it;
// `error` then completes a message that begins with the property's name and value.

/// Searches upwards for the temperature; the property rises with it.
bool flashAtPressure(const Mixture& mixture, double pressure, const GivenProperty& given, Equilibrium& result,
                     std::string& error);

/// Searches upwards for the pressure.
bool flashAtTemperature(const Mixture& mixture, double temperature, const GivenProperty& given,
                        Equilibrium& result, std::string& error);

/// Searches the states of that vapour fraction for temperature and pressure, by rising temperature.
bool flashAtVaporFraction(const Mixture& mixture, double vaporFraction, const GivenProperty& given,
                          Equilibrium& result, std::string& error);

} // namespace solvane::host
