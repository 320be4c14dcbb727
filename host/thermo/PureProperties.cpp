#include "PureProperties.h"

#include "IdealGas.h"
#include "MolarProperties.h"
#include "Saturation.h"
#include "SurfaceTension.h"
#include "TransportProperties.h"

#include <array>
#include <limits>

namespace solvane::host {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr Dual nothing{nan, nan};

const std::array<double, 1> pure{1.0};
const std::array<Dual, 1> pureDual{1.0};

/// The slope of the vapour pressure curve by Clapeyron's equation, Pa/K.
double saturationSlope(const Compound& compound, double temperature, double pressure) {
    const std::array compounds{&compound};
    const auto at = [&](Phase phase) {
        return molarProperties<double>(compounds, phase, temperature, pressure, pure);
    };
    const MolarProperties vapor = at(Phase::vapor);
    const MolarProperties liquid = at(Phase::liquid);
    return (vapor.entropyNF - liquid.entropyNF) / (vapor.volume - liquid.volume);
}

Dual saturationPressure(const Compound& compound, double temperature) {
    const auto pressure = vaporPressure(compound, temperature);
    return pressure ? Dual{*pressure, saturationSlope(compound, temperature, *pressure)} : nothing;
}

/// Vapour and liquid at saturation as functions of temperature.
struct Saturated {
    std::array<const Compound*, 1> compounds;
    Dual temperature;
    Dual pressure;

    MolarPropertiesOf<Dual> at(Phase phase) const {
        return molarProperties<Dual>(compounds, phase, temperature, pressure, pureDual);
    }
};

/// A property of the saturated states from `function(saturated, vapour's properties, liquid's properties)`.
template <auto function>
Dual saturated(const Compound& compound, double temperature) {
    const Saturated state{{&compound}, {temperature, 1}, saturationPressure(compound, temperature)};
    return std::isnan(state.pressure.value)
               ? nothing
               : function(state, state.at(Phase::vapor), state.at(Phase::liquid));
}

using Properties = MolarPropertiesOf<Dual>;

Dual vaporizationHeat(const Saturated&, const Properties& vapor, const Properties& liquid) {
    return vapor.enthalpyNF - liquid.enthalpyNF;
}

Dual vaporizationVolume(const Saturated&, const Properties& vapor, const Properties& liquid) {
    return vapor.volume - liquid.volume;
}

Dual liquidVolume(const Saturated&, const Properties&, const Properties& liquid) {
    return liquid.volume;
}

Dual liquidHeatCapacity(const Saturated&, const Properties&, const Properties& liquid) {
    return liquid.heatCapacityCp;
}

Dual liquidViscosity(const Saturated& state, const Properties&, const Properties& liquid) {
    return viscosity<Dual>(state.compounds, state.temperature, liquid.volume, pureDual);
}

Dual liquidConductivity(const Saturated& state, const Properties&, const Properties& liquid) {
    return thermalConductivity<Dual>(state.compounds, state.temperature, liquid.volume, pureDual);
}

Dual tension(const Saturated& state, const Properties& vapor, const Properties& liquid) {
    return surfaceTension<Dual>(state.compounds, vapor.volume, pureDual, liquid.volume, pureDual);
}

Dual vaporFugacityCoefficient(const Saturated& state, const Properties&, const Properties&) {
    return exp(
        HomogeneousPhase<Dual>(state.compounds, Phase::vapor, state.temperature, state.pressure, pureDual)
            .logFugacityCoefficients()[0]);
}

/// Second virial coefficient.
Dual virialCoefficient(const Compound& compound, double temperature) {
    const Dual t{temperature, 1};
    const Dual root = attractionRoot(compound).value(sqrt(t));
    return covolume(compound) - root * root / (gasConstant * t);
}

/// Of the dilute gas: at this volume, m3/mol, molecules meet one at a time.
template <auto transport>
Dual dilute(const Compound& compound, double temperature) {
    constexpr double volume = 1;
    return transport(std::array{&compound}, Dual{temperature, 1}, Dual{volume}, pureDual);
}

template <auto property>
Dual idealGas(const Compound& compound, double temperature) {
    return property(compound, Dual{temperature, 1});
}

using enum PureArgument;

constexpr std::array propertyTable{
    PurePropertyRow{"idealGasHeatCapacity", temperature, idealGas<idealGasHeatCapacity<Dual>>},
    PurePropertyRow{"idealGasEnthalpy", temperature, idealGas<idealGasEnthalpy<Dual>>},
    PurePropertyRow{"idealGasEntropy", temperature, idealGas<idealGasEntropy<Dual>>},
    PurePropertyRow{"vaporPressure", temperature, saturationPressure},
    PurePropertyRow{"heatOfVaporization", temperature, heatOfVaporization},
    PurePropertyRow{"volumeChangeUponVaporization", temperature, saturated<vaporizationVolume>},
    PurePropertyRow{"volumeOfLiquid", temperature, saturated<liquidVolume>},
    PurePropertyRow{"heatCapacityOfLiquid", temperature, saturated<liquidHeatCapacity>},
    PurePropertyRow{"viscosityOfLiquid", temperature, saturated<liquidViscosity>},
    PurePropertyRow{"thermalConductivityOfLiquid", temperature, saturated<liquidConductivity>},
    PurePropertyRow{"surfaceTensionSatLiquid", temperature, saturated<tension>},
    PurePropertyRow{"fugacityCoefficientOfVapor", temperature, saturated<vaporFugacityCoefficient>},
    PurePropertyRow{"virialCoefficient", temperature, virialCoefficient},
    PurePropertyRow{"viscosityOfVapor", temperature, dilute<viscosity<Dual>>},
    PurePropertyRow{"thermalConductivityOfVapor", temperature, dilute<thermalConductivity<Dual>>},
    PurePropertyRow{"boilingPointTemperature", pressure, boilingPoint},
};

} // namespace

std::span<const PurePropertyRow> pureProperties() {
    return propertyTable;
}

Dual boilingPoint(const Compound& compound, double pressure) {
    const auto temperature = boilingTemperature(compound, pressure);
    return temperature ? Dual{*temperature, 1 / saturationSlope(compound, *temperature, pressure)} : nothing;
}

Dual heatOfVaporization(const Compound& compound, double temperature) {
    return saturated<vaporizationHeat>(compound, temperature);
}

} // namespace solvane::host
