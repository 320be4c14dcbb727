#include "IdealGas.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

constexpr double lowestFitted = 150.0;
constexpr double highestFitted = 1500.0;

double fittedTemperature(double temperature) {
    return std::clamp(temperature, lowestFitted, highestFitted);
}

double polynomial(const Compound& compound, double temperature) {
    const auto& c = compound.idealGasHeatCapacity;
    return c[0] + temperature * (c[1] + temperature * (c[2] + temperature * c[3]));
}

/// Antiderivative of the polynomial, and below that of the polynomial over T.
double heat(const Compound& compound, double t) {
    const auto& c = compound.idealGasHeatCapacity;
    return t * (c[0] + t * (c[1] / 2 + t * (c[2] / 3 + t * c[3] / 4)));
}

double heatOverTemperature(const Compound& compound, double t) {
    const auto& c = compound.idealGasHeatCapacity;
    return c[0] * std::log(t) + t * (c[1] + t * (c[2] / 2 + t * c[3] / 3));
}

} // namespace

double idealGasHeatCapacity(const Compound& compound, double temperature) {
    return polynomial(compound, fittedTemperature(temperature));
}

double idealGasEnthalpy(const Compound& compound, double temperature) {
    const double fitted = fittedTemperature(temperature);
    return heat(compound, fitted) - heat(compound, referenceTemperature) +
           polynomial(compound, fitted) * (temperature - fitted);
}

double idealGasEntropy(const Compound& compound, double temperature) {
    const double fitted = fittedTemperature(temperature);
    return heatOverTemperature(compound, fitted) - heatOverTemperature(compound, referenceTemperature) +
           polynomial(compound, fitted) * std::log(temperature / fitted);
}

} // namespace solvane::host
