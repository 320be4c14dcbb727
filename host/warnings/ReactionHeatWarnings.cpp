#include "ReactionHeatWarnings.h"

#include "MixtureEnthalpy.h"
#include "Powers.h"
#include "cases/NumberText.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

/// Of the heat in the feed.
constexpr double negligiblePart = 1e-3;
/// Of heats of reaction: scripts take them at other temperatures, and from tables.
constexpr double tolerance = 0.05;

/// Whether an input may set the temperature of the product, or of what cools or heats it.
bool isTempered(const UnitResult& unit) {
    constexpr std::size_t kelvin = 4;
    return std::ranges::any_of(unit.parameters, [](const ModelParameter& parameter) {
        return parameter.isInput && parameter.dimensionality.size() > kelvin &&
               parameter.dimensionality[kelvin] != 0;
    });
}

} // namespace

void addReactionHeatWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const Balance& balance = review.balance;
    if (!balance.reacts || review.feeds.size() != 1 || review.products.size() != 1 || isBalanced(review) ||
        isTempered(review.unit))
        return;
    const StreamResult& feed = *review.feeds.front();
    const StreamResult& product = *review.products.front();
    const auto unchanged =
        mixtureEnthalpy(review.compounds, product.fraction, product.pressure,
                        {FlashVariable::temperature, feed.temperature}, PhaseProperty::enthalpyF);
    if (!unchanged)
        return;
    // Heats of reaction, W, and what the product takes up, at the feed's temperature and at that of
    // formation.
    const Flows atFeed{balance.enthalpy.in, product.totalFlow * *unchanged};
    const double sensible = gain(balance.sensible);
    const auto isTurned = [&](double reaction, double taken) {
        return std::abs(reaction) > negligiblePart * heatOf(review.feeds) &&
               std::abs(taken - reaction) <= tolerance * std::abs(reaction);
    };
    const double reaction = gain(atFeed);
    if (!isTurned(reaction, balance.enthalpy.out - atFeed.out) &&
        !isTurned(gain(balance.enthalpy) - sensible, sensible))
        return;
    warnings.push_back({review.unit.name, "stream " + product.name,
                        "the reaction " + std::string(reaction < 0 ? "gives off " : "takes up ") +
                            watts(std::abs(reaction)) + " at the feed's temperature, " +
                            shortNumber(feed.temperature, 6) + " K, but the product is " +
                            (reaction < 0 ? "colder" : "warmer") + " by about as much, at " +
                            shortNumber(product.temperature, 6) + " K",
                        "look at the sign of the heat of reaction"});
}

} // namespace solvane::host
