#include "Warnings.h"

#include "Balances.h"
#include "ScriptError.h"
#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>

namespace solvane::host {

namespace {

std::string number(double value) {
    return shortNumber(value, 7);
}

/// What is wrong with a stream, and what to do.
struct StreamFault {
    std::string text;
    std::string remedy;
};

// Each rule returns the fault of a product, if it has one.

std::optional<StreamFault> compositionFault(const StreamResult& stream, double) {
    const double total = std::reduce(stream.fraction.begin(), stream.fraction.end());
    if (std::abs(total - 1) <= compositionTolerance)
        return std::nullopt;
    return StreamFault{"the mole fractions sum to " + number(total) + ", not to 1",
                       "divide the composition by its sum: x/sum(x)"};
}

std::optional<StreamFault> flowFault(const StreamResult& stream, double) {
    if (stream.totalFlow >= 0)
        return std::nullopt;
    return StreamFault{"the flow, " + number(stream.totalFlow) + " mol/s, must not be negative",
                       "let the script refuse what makes it negative, by error"};
}

std::optional<StreamFault> temperatureFault(const StreamResult& stream, double) {
    if (stream.temperature >= lowestFitted && stream.temperature <= highestFitted)
        return std::nullopt;
    return StreamFault{"the temperature, " + number(stream.temperature) + " K, lies outside " +
                           number(lowestFitted) + " to " + number(highestFitted) +
                           " K, the range of the package's heat capacities",
                       "temperatures are in K"};
}

/// A pressure in bar where Pa are expected.
std::optional<StreamFault> pressureFault(const StreamResult& stream, double lowestFeedPressure) {
    constexpr double suspect = 1e3;
    constexpr double usual = 1e4;
    if (stream.pressure >= suspect || lowestFeedPressure <= usual)
        return std::nullopt;
    return StreamFault{"the pressure, " + number(stream.pressure) +
                           " Pa, lies far below that of the feeds, " + number(lowestFeedPressure) + " Pa",
                       "pressures are in Pa: 1 bar is 1e5 Pa"};
}

/// A state of a feed, as a case states it.
struct FeedNumber {
    const char* name;
    std::optional<double> FeedStream::* value;
    std::string FeedStream::* unit;
    const char* siUnit;
    double least;
    double most;
    const char* usualUnit;
};

constexpr std::array feedNumbers{
    FeedNumber{"temperature", &FeedStream::temperature, &FeedStream::temperatureUnit, "K", 100, 5000, "degC"},
    FeedNumber{"pressure", &FeedStream::pressure, &FeedStream::pressureUnit, "Pa", 1e3, 1e12, "bar"},
};

constexpr std::array streamRules{compositionFault, flowFault, temperatureFault, pressureFault};

constexpr char balanceRemedy[] = "compare the script's balance with its equations";

} // namespace

void addScriptWarnings(const UnitResult& unit, std::vector<Warning>& warnings) {
    for (ScriptWarning& warning : scriptWarnings(unit))
        warnings.push_back({unit.name, "script", std::move(warning.text), std::move(warning.remedy)});
}

void addWarnings(const UnitResult& unit, const Balance& balance, std::span<const StreamResult* const> feeds,
                 std::span<const StreamResult* const> products, std::vector<Warning>& warnings) {
    const double lowestFeedPressure =
        feeds.empty() ? 0 : (*std::ranges::min_element(feeds, {}, &StreamResult::pressure))->pressure;
    for (const StreamResult* product : products)
        for (const auto rule : streamRules)
            if (auto fault = rule(*product, lowestFeedPressure))
                warnings.push_back(
                    {unit.name, "stream " + product->name, std::move(fault->text), std::move(fault->remedy)});
    for (const ModelParameter& parameter : unit.parameters)
        if (!parameter.isInput && !isSet(parameter))
            warnings.push_back({unit.name, "parameter " + parameter.name,
                                "the output has no value: the script never set it, or set it to NaN",
                                "call setParameter for it, or remove it"});
    // A source or a sink of the flowsheet conserves nothing.
    if (balance.mass.in != 0 && !products.empty() && !isKept(balance.mass))
        warnings.push_back(
            {unit.name, "balance",
             number(balance.mass.in) + " kg/s go in and " + number(balance.mass.out) + " kg/s come out",
             balanceRemedy});
    else if (balance.reacts)
        for (const ElementFlow& element : balance.elements)
            if (!isKept(element.moles))
                warnings.push_back({unit.name, "balance",
                                    number(element.moles.in) + " mol/s of " + element.symbol + " go in and " +
                                        number(element.moles.out) + " mol/s come out",
                                    balanceRemedy});
}

void addFeedWarnings(const Case& flowsheet, std::vector<Warning>& warnings) {
    for (const UnitCase& unit : flowsheet.units)
        for (const PortConnection& port : unit.feeds) {
            const auto feed = std::ranges::find(flowsheet.feeds, port.stream, &FeedStream::name);
            if (feed == flowsheet.feeds.end())
                continue;
            for (const FeedNumber& one : feedNumbers) {
                const std::optional<double>& value = (*feed).*one.value;
                if (!value || !((*feed).*one.unit).empty() || (*value >= one.least && *value <= one.most))
                    continue;
                const std::string shown = number(*value);
                warnings.push_back(
                    {unit.name, "stream " + feed->name,
                     std::string("the ") + one.name + ", " + shown + ", has no unit and is read as " + shown +
                         " " + one.siUnit,
                     std::string("state its unit, as in \"") + shown + " " + one.usualUnit + "\""});
            }
        }
}

} // namespace solvane::host
