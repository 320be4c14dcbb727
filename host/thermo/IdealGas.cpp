#include "IdealGas.h"

#include <cmath>

namespace solvane::host {

namespace {

template <class Scalar>
Scalar fittedTemperature(Scalar temperature) {
    const double t = plain(temperature);
    return t < lowestFitted ? lowestFitted : t > highestFitted ? highestFitted : temperature;
}

template <class Scalar>
Scalar polynomial(const Compound& compound, Scalar temperature) {
    const auto& c = compound.idealGasHeatCapacity;
    return c[0] + temperature * (c[1] + temperature * (c[2] + temperature * c[3]));
}

/// Antiderivative of the polynomial, and below that of the polynomial over T.
template <class Scalar>
Scalar heat(const Compound& compound, Scalar t) {
    const auto& c = compound.idealGasHeatCapacity;
    return t * (c[0] + t * (c[1] / 2 + t * (c[2] / 3 + t * (c[3] / 4))));
}

template <class Scalar>
Scalar heatOverTemperature(const Compound& compound, Scalar t) {
    using std::log;
    const auto& c = compound.idealGasHeatCapacity;
    return c[0] * log(t) + t * (c[1] + t * (c[2] / 2 + t * (c[3] / 3)));
}

} // namespace

template <class Scalar>
Scalar idealGasHeatCapacity(const Compound& compound, Scalar temperature) {
    return polynomial(compound, fittedTemperature(temperature));
}

template <class Scalar>
Scalar idealGasEnthalpy(const Compound& compound, Scalar temperature) {
    const Scalar fitted = fittedTemperature(temperature);
    return heat(compound, fitted) - heat(compound, referenceTemperature) +
           polynomial(compound, fitted) * (temperature - fitted);
}

template <class Scalar>
Scalar idealGasEntropy(const Compound& compound, Scalar temperature) {
    using std::log;
    const Scalar fitted = fittedTemperature(temperature);
    return heatOverTemperature(compound, fitted) - heatOverTemperature(compound, referenceTemperature) +
           polynomial(compound, fitted) * log(temperature / fitted);
}

template double idealGasHeatCapacity(const Compound&, double);
template Dual idealGasHeatCapacity(const Compound&, Dual);
template double idealGasEnthalpy(const Compound&, double);
template Dual idealGasEnthalpy(const Compound&, Dual);
template double idealGasEntropy(const Compound&, double);
template Dual idealGasEntropy(const Compound&, Dual);

} // namespace solvane::host
