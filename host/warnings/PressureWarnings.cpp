#include "PressureWarnings.h"

#include "Powers.h"
#include "cases/NumberText.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

/// Of the heat in the feeds.
constexpr double negligiblePart = 1e-5;
constexpr double negligibleRise = 1e-4;

bool takesUpNothing(const UnitReview& review) {
    return std::abs(gain(review.balance.enthalpy)) <= negligiblePart * heatOf(review.feeds) &&
           std::ranges::all_of(powersOf(review.unit), [](const Power& power) { return power.value == 0; });
}

} // namespace

void addPressureWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    if (review.feeds.empty() || !takesUpNothing(review))
        return;
    double highest = 0;
    for (const StreamResult* feed : review.feeds)
        if (feed->totalFlow > 0)
            highest = std::max(highest, feed->pressure);
    for (const StreamResult* product : review.products)
        if (product->totalFlow > 0 && product->vaporFraction > 0 &&
            product->pressure > (1 + negligibleRise) * highest)
            warnings.push_back({review.unit.name, "stream " + product->name,
                                "the pressure, " + shortNumber(product->pressure, 7) +
                                    " Pa, lies above that of all feeds, " + shortNumber(highest, 7) +
                                    " Pa, although the unit takes up no power",
                                review.feeds.size() == 1
                                    ? "look at the sign of the pressure drop"
                                    : "look at the sign of the pressure drop, and take it from the lowest "
                                      "pressure of the feeds"});
}

} // namespace solvane::host
