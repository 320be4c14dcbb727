#include "EntropyWarnings.h"

#include "MixtureEnthalpy.h"
#include "Powers.h"
#include "cases/NumberText.h"
#include "results/Balances.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace solvane::host {

namespace {

/// Of R per mole: an isentropic change by the formulas of ideal gases errs by as much.
constexpr double tolerance = 1e-2;
/// Of the heat in the feeds.
constexpr double negligiblePart = 1e-5;
constexpr double powerPart = 1e-3;
constexpr double samePart = 1e-5;

double flowOf(std::span<const StreamResult* const> streams) {
    double flow = 0;
    for (const StreamResult* stream : streams)
        flow += stream->totalFlow;
    return flow;
}

/// Whether all products have one composition. To unmix takes work or heat at two temperatures, which models
/// of separations leave out.
bool separates(const UnitReview& review) {
    const auto& composition = review.products.front()->fraction;
    return !std::ranges::all_of(review.products, [&](const StreamResult* product) {
        return std::ranges::equal(product->fraction, composition, [](double left, double right) {
            return std::abs(left - right) <= samePart;
        });
    });
}

/// Whether the parameters show that the unit gives off no heat.
bool keepsItsHeat(const UnitReview& review) {
    const double gained = gain(review.balance.enthalpy);
    std::vector<Power> powers = powersOf(review.unit);
    std::erase_if(powers, [](const Power& power) { return power.value == 0; });
    if (std::abs(gained) <= negligiblePart * heatOf(review.feeds))
        return powers.empty();
    return powers.size() == 1 && isSumOf(powers, gained, powerPart * std::abs(gained)) &&
           (gained > 0 || !isNamedHeat(powers.front()));
}

/// What explains the fall, by the part that the gain in enthalpy is of the isentropic one.
struct Cause {
    double lowest, highest;
    const char* remedy;
};

constexpr char allCauses[] =
    "look for enthalpies in kJ/mol, an efficiency above 1, an ideal work at constant temperature, and a "
    "pressure that rises without power";
/// Real gases give off some enthalpy when they are compressed at constant temperature.
constexpr double noPart = -0.1;
constexpr double smallPart = 1e-4;

/// Where the pressure rises. Beyond, the pressure hardly changes.
constexpr std::array compressions{
    Cause{-10, noPart,
          "the enthalpy rises with the pressure: look at the sign of the work, and at which value goes to "
          "'entropy'"},
    Cause{noPart, smallPart,
          "look for a product at the feed's temperature, and a pressure that rises without power"},
    Cause{smallPart, 0.01, "look for enthalpies in kJ/mol"},
    Cause{0.01, 1,
          "look for an efficiency above 1, a work that is multiplied by it in place of divided, and an ideal "
          "work at constant temperature"},
};
constexpr std::array expansions{
    Cause{1, 10, "look for an efficiency above 1, and a work that is divided by it in place of multiplied"},
};

const char* remedyFor(double gained, double isentropic) {
    const double part = gained / isentropic;
    for (const Cause& cause : isentropic > 0 ? std::span<const Cause>(compressions) : expansions)
        if (part >= cause.lowest && part < cause.highest)
            return cause.remedy;
    return allCauses;
}

} // namespace

void addEntropyWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const double fall = -gain(review.balance.entropy);
    const double flow = flowOf(review.feeds);
    if (!(flow > 0) || !(fall > tolerance * gasConstant * flow) || review.balance.reacts ||
        separates(review) || !keepsItsHeat(review))
        return;
    std::string text =
        "the entropy falls by " + shortNumber(fall, 6) + " W/K, although the unit gives off no heat";
    const char* remedy = allCauses;
    const auto& product = *review.products.front();
    if (const auto least = review.products.size() == 1
                               ? mixtureEnthalpy(review.compounds, product.fraction, product.pressure,
                                                 {FlashVariable::entropy, review.balance.entropy.in / flow},
                                                 PhaseProperty::enthalpy)
                               : std::nullopt) {
        const double gained = gain(review.balance.enthalpy);
        const double isentropic = flow * *least - review.balance.enthalpy.in;
        text += ": at this pressure of the product the gain in enthalpy is " + watts(isentropic) +
                " or more, not " + watts(gained);
        remedy = remedyFor(gained, isentropic);
    }
    warnings.push_back({review.unit.name, "balance", std::move(text), remedy});
}

} // namespace solvane::host
