#include "CaseParts.h"
#include "NameList.h"
#include "NumberText.h"
#include "Quantity.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

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
           place.fail("the mole fractions sum to " + shortNumber(sum, 10) + ", not to 1");
}

bool isPositive(const CasePlace& place, const char* key, std::optional<double> number, const char* unit) {
    return !number || *number > 0 ||
           place.member(key).fail(std::string("expected a number above 0, in ") + unit);
}

/// Reads an optional number in SI units, or a quantity with its unit.
bool readMeasured(const CasePlace& feed, const char* key, const char* siUnit, std::optional<double>& number,
                  std::string& unit) {
    if (!feed.value().contains(key))
        return true;
    const CasePlace place = feed.member(key);
    if (!place.value().is_string())
        return read(place, number);
    const auto& text = place.value().get_ref<const std::string&>();
    Quantity quantity;
    std::string error;
    if (!parseQuantity(text, parseUnit(siUnit)->exponents, quantity, error))
        return place.fail(error);
    number = quantity.value;
    unit = quantity.unit;
    return true;
}

/// Reads the flow, of moles or of mass, once the composition is read.
bool readFlow(const CasePlace& feed, const std::vector<const Compound*>& compounds, FeedStream& result) {
    if (!feed.value().contains("flow"))
        return feed.fail("the key \"flow\" is missing");
    const CasePlace place = feed.member("flow");
    if (place.value().is_string()) {
        Quantity quantity;
        std::string error;
        if (!parseQuantity(place.value().get_ref<const std::string&>(), quantity, error))
            return place.fail(error);
        const bool isOfMass = isSameDimension(quantity.measure.exponents, massFlowDimension);
        if (!isOfMass && !isSameDimension(quantity.measure.exponents, parseUnit("mol/s")->exponents))
            return place.fail("expected a flow of moles or of mass, such as \"360 kmol/h\" or \"50 t/h\"");
        result.flow = quantity.value / (isOfMass ? molarMass(compounds, result.composition) : 1);
        result.flowUnit = quantity.unit;
    } else if (!read(place, result.flow)) {
        return false;
    }
    return result.flow >= 0 || place.fail("a flow cannot be negative");
}

} // namespace

bool readFeed(const CasePlace& place, const std::vector<const Compound*>& compounds, FeedStream& feed) {
    if (!place.isObject({"name", "temperature", "pressure", "vaporFraction", "flow", "composition"}) ||
        !place.required("name", feed.name) ||
        !readMeasured(place, "temperature", "K", feed.temperature, feed.temperatureUnit) ||
        !readMeasured(place, "pressure", "Pa", feed.pressure, feed.pressureUnit) ||
        !place.optional("vaporFraction", feed.vaporFraction) ||
        !isPositive(place, "temperature", feed.temperature, "K") ||
        !isPositive(place, "pressure", feed.pressure, "Pa"))
        return false;
    if (feed.temperature.has_value() + feed.pressure.has_value() + feed.vaporFraction.has_value() != 2)
        return place.fail("expected two of \"temperature\", \"pressure\" and \"vaporFraction\"");
    if (feed.vaporFraction && !(*feed.vaporFraction >= 0 && *feed.vaporFraction <= 1))
        return place.member("vaporFraction").fail("expected a number from 0 to 1");
    if (!place.value().contains("composition"))
        return place.fail("the key \"composition\" is missing");
    return readComposition(place.member("composition"), compounds, feed.composition) &&
           readFlow(place, compounds, feed);
}

} // namespace solvane::host
