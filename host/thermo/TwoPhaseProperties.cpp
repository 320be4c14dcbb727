#include "Derivatives.h"
#include "FlashVariables.h"
#include "HomogeneousPhase.h"
#include "PropertyPackage.h"
#include "SurfaceTension.h"

namespace solvane::host {

namespace {

template <class Scalar>
struct Side {
    HomogeneousPhase<Scalar> phase;
    std::span<const Scalar> composition;
};

template <class Scalar>
std::vector<Scalar> valuesOf(TwoPhaseProperty property, std::span<const Compound* const> compounds,
                             const Side<Scalar>& first, const Side<Scalar>& second) {
    using std::exp;
    if (property == TwoPhaseProperty::surfaceTension) {
        return {surfaceTension(compounds, first.phase.volume, first.composition, second.phase.volume,
                               second.composition)};
    }
    std::vector<Scalar> values = second.phase.logFugacityCoefficients();
    const std::vector<Scalar> ofFirst = first.phase.logFugacityCoefficients();
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Scalar logarithm = values[i] - ofFirst[i];
        values[i] = property == TwoPhaseProperty::kvalue ? exp(logarithm) : logarithm;
    }
    return values;
}

} // namespace

bool PropertyPackage::twoPhaseProperty(TwoPhaseProperty property, const TwoPhases& phases, double temperature,
                                       double pressure, std::vector<double>& values, std::string& error,
                                       Derivative derivative) const {
    std::vector<double> fractions, others;
    if (!normalize(phases.compositions[0], fractions, error) ||
        !normalize(phases.compositions[1], others, error) ||
        !checkCondition({FlashVariable::temperature, temperature}, error) ||
        !checkCondition({FlashVariable::pressure, pressure}, error))
        return false;
    fractions.insert(fractions.end(), others.begin(), others.end());
    const std::size_t n = compounds_.size();
    const auto evaluate = [&]<class Scalar>(Scalar t, Scalar p, std::span<const Scalar> x) {
        const auto side = [&](std::size_t index) {
            const auto composition = x.subspan(index * n, n);
            return Side<Scalar>{{compounds_, phases.phases[index], t, p, composition}, composition};
        };
        return valuesOf(property, compounds_, side(0), side(1));
    };
    values = derived(evaluate, derivative, temperature, pressure, fractions, n, false);
    return true;
}

} // namespace solvane::host
