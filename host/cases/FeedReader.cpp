#include "CaseParts.h"
#include "NameList.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace solvane::host {

namespace {

/// How far a composition may be from a sum of 1.
constexpr double compositionTolerance = 1e-6;

std::string numberText(double number) {
    std::ostringstream text;
    text << std::setprecision(10) << number;
    return text.str();
}

bool readComposition(const CasePlace& place, const std::vector<const Compound*>& compounds,
                     std::vector<double>& fractions) {
    if (!place.value().is_object())
        return place.fail("expected an object of mole fractions by compound");
    fractions.assign(compounds.size(), 0.0);
    double sum = 0;
    for (const auto& [name, value] : place.value().items()) {
        const CasePlace fraction = place.member(name);
        const Compound* compound = findCompound(name);
        const auto found = std::ranges::find(compounds, compound);
        if (!compound || found == compounds.end())
            return fraction.fail("the compound is not among the case's: " +
                                 nameList(compounds, &Compound::name));
        double& number = fractions[static_cast<std::size_t>(found - compounds.begin())];
        if (number != 0)
            return fraction.fail("the compound is given twice");
        if (!read(fraction, number))
            return false;
        if (number < 0)
            return fraction.fail("a mole fraction cannot be negative");
        sum += number;
    }
    return std::abs(sum - 1) <= compositionTolerance ||
           place.fail("the mole fractions sum to " + numberText(sum) + ", not to 1");
}

bool isPositive(const CasePlace& place, const char* key, std::optional<double> number, const char* unit) {
    return !number || *number > 0 ||
           place.member(key).fail(std::string("expected a number above 0, in ") + unit);
}

} // namespace

bool readFeed(const CasePlace& place, const std::vector<const Compound*>& compounds, FeedStream& feed) {
    if (!place.isObject({"name", "temperature", "pressure", "vaporFraction", "flow", "composition"}) ||
        !place.required("name", feed.name) || !place.optional("temperature", feed.temperature) ||
        !place.optional("pressure", feed.pressure) || !place.optional("vaporFraction", feed.vaporFraction) ||
        !place.required("flow", feed.flow) || !isPositive(place, "temperature", feed.temperature, "K") ||
        !isPositive(place, "pressure", feed.pressure, "Pa"))
        return false;
    if (feed.temperature.has_value() + feed.pressure.has_value() + feed.vaporFraction.has_value() != 2)
        return place.fail("expected two of \"temperature\", \"pressure\" and \"vaporFraction\"");
    if (feed.vaporFraction && !(*feed.vaporFraction >= 0 && *feed.vaporFraction <= 1))
        return place.member("vaporFraction").fail("expected a number from 0 to 1");
    if (feed.flow < 0)
        return place.member("flow").fail("a flow cannot be negative");
    if (!place.value().contains("composition"))
        return place.fail("the key \"composition\" is missing");
    return readComposition(place.member("composition"), compounds, feed.composition);
}

} // namespace solvane::host
