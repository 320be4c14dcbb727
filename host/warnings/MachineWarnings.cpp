#include "MachineWarnings.h"

#include "MixtureEnthalpy.h"
#include "Powers.h"
#include "cases/NumberText.h"
#include "thermo/IdealGas.h"

#include <cmath>

namespace solvane::host {

namespace {

/// Of the heat in the feed.
constexpr double negligiblePart = 1e-4;
/// Closer than chance brings a cooled or heated machine.
constexpr double part = 1e-4;

bool isNear(double left, double right) {
    return std::abs(left - right) <= part * std::abs(right);
}

} // namespace

void addMachineWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const double gained = gain(review.balance.enthalpy);
    const double negligible = negligiblePart * heatOf(review.feeds);
    if (review.feeds.size() != 1 || review.products.size() != 1 || review.balance.reacts ||
        !(std::abs(gained) > negligible))
        return;
    const StreamResult& feed = *review.feeds.front();
    const StreamResult& product = *review.products.front();
    const auto valueAt = [&](FlashVariable variable, double value, PhaseProperty property) {
        return mixtureEnthalpy(review.compounds, product.fraction, product.pressure, {variable, value},
                               property);
    };
    for (const double efficiency : efficienciesOf(review.unit)) {
        const auto isentropic = valueAt(FlashVariable::entropy, feed.entropy, PhaseProperty::enthalpy);
        const double ideal = isentropic ? feed.totalFlow * (*isentropic - feed.enthalpy) : 0;
        if (std::abs(ideal) <= negligible)
            return;
        if (isNear(-gained, ideal * efficiency) || isNear(-gained, ideal / efficiency)) {
            warnings.push_back({review.unit.name, "balance",
                                "the enthalpies change by " + watts(gained) +
                                    ": this is the isentropic change, " + watts(ideal) +
                                    ", with the efficiency " + shortNumber(efficiency, 4) +
                                    " and the wrong sign",
                                "the enthalpy rises with the pressure: look at the sign of the work"});
            return;
        }
        const double assumed = ideal > 0 ? gained * efficiency : gained / efficiency;
        const auto entropy = valueAt(FlashVariable::enthalpy, feed.enthalpy + assumed / feed.totalFlow,
                                     PhaseProperty::entropy);
        if (entropy && std::abs(*entropy - feed.enthalpy) <= part * gasConstant) {
            warnings.push_back({review.unit.name, "balance",
                                "the ideal machine has the entropy " + shortNumber(*entropy, 6) +
                                    " J/mol/K in its product: this is the feed's enthalpy in J/mol",
                                "look at which value goes to 'entropy'"});
            return;
        }
    }
}

} // namespace solvane::host
