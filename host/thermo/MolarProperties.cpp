#include "MolarProperties.h"

#include "IdealGas.h"

#include <array>

namespace solvane::host {

namespace {

/// The properties with `mixingEntropy` as the entropy by which an ideal gas of the mixture exceeds its
/// compounds.
template <class Scalar>
MolarPropertiesOf<Scalar> propertiesWith(Scalar mixingEntropy, std::span<const Compound* const> compounds,
                                         Phase phase, Scalar temperature, Scalar pressure,
                                         std::span<const Scalar> composition) {
    using std::log;
    using std::sqrt;
    const HomogeneousPhase<Scalar> state(compounds, phase, temperature, pressure, composition);
    Scalar enthalpy = state.residualEnthalpy;
    Scalar entropy = state.residualEntropy - gasConstant * log(pressure / referencePressure) + mixingEntropy;
    Scalar idealHeatCapacity = 0;
    Scalar formationEnthalpy = 0;
    Scalar formationEntropy = 0;
    Scalar molecularWeight = 0;
    for (std::size_t i = 0; i < composition.size(); ++i) {
        const Scalar x = composition[i];
        const Compound& compound = *compounds[i];
        enthalpy += x * idealGasEnthalpy(compound, temperature);
        entropy += x * idealGasEntropy(compound, temperature);
        idealHeatCapacity += x * idealGasHeatCapacity(compound, temperature);
        formationEnthalpy += x * compound.formationEnthalpy;
        formationEntropy +=
            x * ((compound.formationEnthalpy - compound.formationGibbsEnergy) / referenceTemperature);
        molecularWeight += x * compound.molecularWeight;
    }

    MolarPropertiesOf<Scalar> result;
    const Scalar volume = state.volume;
    result.enthalpyF = enthalpy + formationEnthalpy;
    result.enthalpyNF = enthalpy;
    result.entropyF = entropy + formationEntropy;
    result.entropyNF = entropy;
    result.internalEnergy = enthalpy - pressure * volume;
    result.gibbsEnergy = enthalpy - temperature * entropy;
    result.helmholtzEnergy = result.internalEnergy - temperature * entropy;
    result.volume = volume;
    result.density = 1 / volume;
    result.compressibilityFactor = state.compressibilityFactor();
    result.compressibility = -1 / (volume * state.pressureByVolume);
    result.molecularWeight = molecularWeight;

    const Scalar expansion = -state.pressureByTemperature / state.pressureByVolume; // dV/dT at constant P
    result.heatCapacityCv = idealHeatCapacity - gasConstant + state.residualHeatCapacity;
    result.heatCapacityCp = result.heatCapacityCv + temperature * expansion * state.pressureByTemperature;
    result.speedOfSound = volume * sqrt(-result.heatCapacityCp / result.heatCapacityCv *
                                        state.pressureByVolume / (1e-3 * molecularWeight));
    result.jouleThomsonCoefficient = (temperature * expansion - volume) / result.heatCapacityCp;
    return result;
}

} // namespace

template <class Scalar>
MolarPropertiesOf<Scalar> molarProperties(std::span<const Compound* const> compounds, Phase phase,
                                          Scalar temperature, Scalar pressure,
                                          std::span<const Scalar> composition) {
    Scalar mixingEntropy = 0;
    for (const Scalar& x : composition)
        mixingEntropy += -gasConstant * timesLog(x);
    return propertiesWith(mixingEntropy, compounds, phase, temperature, pressure, composition);
}

template <class Scalar>
MolarPropertiesOf<Scalar> excessProperties(std::span<const Compound* const> compounds, Phase phase,
                                           Scalar temperature, Scalar pressure,
                                           std::span<const Scalar> composition) {
    using Properties = MolarPropertiesOf<Scalar>;
    // Without the entropy of ideal mixing, which is infinitely steep at a fraction of 0.
    Properties result = propertiesWith(Scalar(0), compounds, phase, temperature, pressure, composition);
    const std::array<Scalar, 1> pure{1.0};
    for (std::size_t i = 0; i < composition.size(); ++i) {
        const Properties ofPure = molarProperties(compounds.subspan(i, 1), phase, temperature, pressure,
                                                  std::span<const Scalar>(pure));
        for (Scalar Properties::* property :
             {&Properties::enthalpyNF, &Properties::entropyNF, &Properties::volume})
            result.*property += -composition[i] * (ofPure.*property);
    }
    result.internalEnergy = result.enthalpyNF - pressure * result.volume;
    result.gibbsEnergy = result.enthalpyNF - temperature * result.entropyNF;
    result.helmholtzEnergy = result.internalEnergy - temperature * result.entropyNF;
    return result;
}

template MolarPropertiesOf<double> molarProperties(std::span<const Compound* const>, Phase, double, double,
                                                   std::span<const double>);
template MolarPropertiesOf<Dual> molarProperties(std::span<const Compound* const>, Phase, Dual, Dual,
                                                 std::span<const Dual>);
template MolarPropertiesOf<double> excessProperties(std::span<const Compound* const>, Phase, double, double,
                                                    std::span<const double>);
template MolarPropertiesOf<Dual> excessProperties(std::span<const Compound* const>, Phase, Dual, Dual,
                                                  std::span<const Dual>);

} // namespace solvane::host
