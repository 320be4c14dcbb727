#include "MolarProperties.h"

#include "IdealGas.h"

#include <cmath>

namespace solvane::host {

MolarProperties molarProperties(std::span<const Compound* const> compounds, Phase phase, double temperature,
                                double pressure, std::span<const double> composition) {
    const Residual residual =
        PengRobinson(compounds, temperature).residual(rootOf(phase), pressure, composition);
    double enthalpy = residual.enthalpy;
    double entropy = residual.entropy - gasConstant * std::log(pressure / referencePressure);
    double formationEnthalpy = 0;
    double formationEntropy = 0;
    for (std::size_t i = 0; i < composition.size(); ++i) {
        const double x = composition[i];
        if (x <= 0) {
            continue;
        }
        const Compound& compound = *compounds[i];
        enthalpy += x * idealGasEnthalpy(compound, temperature);
        entropy += x * (idealGasEntropy(compound, temperature) - gasConstant * std::log(x));
        formationEnthalpy += x * compound.formationEnthalpy;
        formationEntropy +=
            x * (compound.formationEnthalpy - compound.formationGibbsEnergy) / referenceTemperature;
    }
    return {.enthalpyF = enthalpy + formationEnthalpy,
            .enthalpyNF = enthalpy,
            .entropyF = entropy + formationEntropy,
            .entropyNF = entropy,
            .internalEnergy = enthalpy - pressure * residual.volume,
            .volume = residual.volume};
}

} // namespace solvane::host
