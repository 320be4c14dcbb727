#include "MixtureEnthalpy.h"

namespace solvane::host {

std::optional<double> mixtureEnthalpy(std::span<const Compound* const> compounds,
                                      std::span<const double> composition, double pressure,
                                      const FlashCondition& condition, PhaseProperty enthalpy) {
    const PropertyPackage package({compounds.begin(), compounds.end()});
    Equilibrium state;
    std::string error;
    if (!package.flash(composition, {FlashVariable::pressure, pressure}, condition, state, error))
        return std::nullopt;
    double total = 0;
    for (const PhaseState& phase : state.phases) {
        std::vector<double> molar;
        if (!package.phaseProperty(enthalpy, phase.phase, state.temperature, state.pressure,
                                   phase.composition, molar, error))
            return std::nullopt;
        total += phase.fraction * molar.front();
    }
    return total;
}

} // namespace solvane::host
