#include "OutputWarnings.h"

#include "OutputNames.h"
#include "PlainNumbers.h"
#include "Powers.h"
#include "cases/NumberText.h"
#include "cases/UnitOfMeasure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <optional>
#include <utility>

namespace solvane::host {

namespace {

/// By which part scripts round.
constexpr double roundedPart = 1e-5;
/// By which part sums of the same numbers differ.
constexpr double summedPart = 1e-7;
constexpr double zeroOfCelsius = 273.15;
/// Lower limits would meet differences of temperatures.
constexpr double highestTemperature = 5000;

bool isSame(double left, double right, double part = roundedPart) {
    return std::abs(left - right) <= part * std::abs(right);
}

/// What an output may be.
struct Known {
    std::string name;                     ///< such as "the flow of stream Main"
    double value;                         ///< in SI units
    const StreamResult* stream = nullptr; ///< of which it is the state or the whole flow
};

std::vector<const StreamResult*> streamsOf(const UnitReview& review) {
    std::vector<const StreamResult*> streams(review.feeds.begin(), review.feeds.end());
    streams.insert(streams.end(), review.products.begin(), review.products.end());
    return streams;
}

/// The flows of single streams and of all feeds or products, and of each compound in them, by what a mole of
/// the compound counts.
template <class PerMole>
std::vector<Known> flows(const UnitReview& review, const std::string& name, const PerMole& perMole) {
    std::vector<Known> known;
    const auto add = [&](const std::string& where, std::span<const StreamResult* const> streams) {
        Known total{"the " + name + " of " + where, 0};
        for (std::size_t i = 0; i < review.compounds.size(); ++i) {
            Known one{"the " + name + " of " + std::string(review.compounds[i]->name) + " in " + where, 0};
            for (const StreamResult* stream : streams)
                one.value += stream->totalFlow * stream->fraction[i] * perMole(*review.compounds[i]);
            total.value += one.value;
            known.push_back(std::move(one));
        }
        known.push_back(std::move(total));
    };
    for (const StreamResult* stream : streamsOf(review)) {
        add("stream " + stream->name, std::array{stream});
        known.back().stream = stream;
    }
    add("all feeds", review.feeds);
    add("all products", review.products);
    return known;
}

double kilograms(const Compound& compound) {
    return molarMass(std::array{&compound}, std::array{1.0});
}

std::vector<Known> massFlows(const UnitReview& review) {
    return flows(review, "mass flow", kilograms);
}

std::vector<Known> molarFlows(const UnitReview& review) {
    return flows(review, "flow", [](const Compound&) { return 1.0; });
}

/// The flows times the sum of the molar masses, which a row of moles times a column of masses makes.
std::vector<Known> broadcastFlows(const UnitReview& review) {
    const double sum =
        std::transform_reduce(review.compounds.begin(), review.compounds.end(), 0.0, std::plus<>(),
                              [](const Compound* compound) { return kilograms(*compound); });
    return flows(review, "sum of all molar masses times the flow", [sum](const Compound&) { return sum; });
}

template <double StreamResult::* state>
std::vector<Known> states(const UnitReview& review) {
    const char* const name = state == &StreamResult::pressure ? "pressure" : "temperature";
    std::vector<Known> known;
    for (const StreamResult* stream : streamsOf(review))
        known.push_back({std::string("the ") + name + " of stream " + stream->name, stream->*state, stream});
    return known;
}

/// What the enthalpies change by per mass or mole of the only feed with flow, of either sign.
template <Flows Balance::* amount>
std::vector<Known> changes(const UnitReview& review) {
    if (std::ranges::count_if(review.feeds, [](const StreamResult* feed) { return feed->totalFlow != 0; }) !=
        1)
        return {};
    const std::string name = std::string("the change of the enthalpies per ") +
                             (amount == &Balance::mass ? "mass" : "mole") + " of the feed";
    const double change = gain(review.balance.enthalpy) / (review.balance.*amount).in;
    return {{name, change}, {name, -change}};
}

/// An output that is `factor` times a known value, plus `offset`. The first row that fits counts.
struct OutputRule {
    const char* siUnit;
    std::vector<Known> (*known)(const UnitReview&);
    double factor;
    const char* otherUnit = "";   ///< in which the value is
    const char* remedy = nullptr; ///< none if the value is right
    double offset = 0;
    bool (*isMeant)(const ModelParameter&) = nullptr; ///< by its name; null for all of this dimension
    bool mayCoincide = false; ///< the numbers are of unlike quantities, and round ones may be given ones
};

constexpr auto temperatures = states<&StreamResult::temperature>;
constexpr auto pressures = states<&StreamResult::pressure>;
constexpr auto changesPerMass = changes<&Balance::mass>;
constexpr auto changesPerMole = changes<&Balance::moles>;

constexpr std::array rules{
    OutputRule{"kg/s", massFlows, 1},
    OutputRule{"kg/s", massFlows, 1000, " in g/s", "set it in kg/s: molar masses are in g/mol"},
    OutputRule{"kg/s", massFlows, 3600, " in kg/h", "set it in kg/s"},
    OutputRule{"kg/s", massFlows, 3.6, " in t/h", "set it in kg/s"},
    OutputRule{"kg/s", broadcastFlows, 1, "",
               "multiply the moles of each compound by its own molar mass: both are columns"},
    OutputRule{"kg/s", molarFlows, 1, " in mol/s", "multiply it by the molar mass, in kg/mol", 0, nullptr,
               true},
    OutputRule{"mol/s", molarFlows, 1},
    OutputRule{"mol/s", molarFlows, 3.6, " in kmol/h", "set it in mol/s"},
    OutputRule{"mol/s", molarFlows, 3600, " in mol/h", "set it in mol/s"},
    OutputRule{"mol/s", molarFlows, 1e-3, " in kmol/s", "set it in mol/s"},
    OutputRule{"mol/s", massFlows, 1, " in kg/s", "divide it by the molar mass, in kg/mol", 0, nullptr, true},
    OutputRule{"J/kg", changesPerMass, 1},
    OutputRule{"J/kg", changesPerMass, 1e-3, " in kJ/kg", "set it in J/kg: molar masses are in g/mol"},
    OutputRule{"J/kg", changesPerMass, 1000, ", times 1000", "set it in J/kg"},
    OutputRule{"J/kg", changesPerMole, 1, " in J/mol", "divide it by the molar mass, in kg/mol"},
    OutputRule{"J/mol", changesPerMole, 1},
    OutputRule{"J/mol", changesPerMole, 1e-3, " in kJ/mol", "set it in J/mol"},
    OutputRule{"J/mol", changesPerMole, 1000, ", times 1000", "set it in J/mol"},
    OutputRule{"J/mol", changesPerMass, 1, " in J/kg", "multiply it by the molar mass, in kg/mol"},
    OutputRule{"K", temperatures, 1},
    OutputRule{"K", temperatures, 1, " in degC", "set it in K", -zeroOfCelsius, isTemperature},
    OutputRule{"K", pressures, 1, "", "set it to a temperature, in K", 0, isTemperature},
    OutputRule{"Pa", pressures, 1},
    OutputRule{"Pa", pressures, 1e-5, " in bar", "set it in Pa: 1 bar is 1e5 Pa", 0, isPressure},
    OutputRule{"Pa", pressures, 1e-6, " in MPa", "set it in Pa", 0, isPressure},
};

/// Whether the factor is one of the unit's own numbers, such as a reflux ratio of 3.6.
bool isGiven(double factor, const UnitReview& review) {
    return std::ranges::any_of(review.unit.parameters, [&](const ModelParameter& parameter) {
        return parameter.value == ParameterValue(factor);
    });
}

/// Whether the number has few digits, also per hour.
bool isRound(double value) {
    constexpr int digits = 4;
    constexpr double perHour = 3.6;
    return std::ranges::any_of(std::array{value, value * perHour}, [](double one) {
        return isSame(std::stod(shortNumber(one, digits)), one, summedPart);
    });
}

/// Whether the output is what it equals, and not by chance.
bool isSure(const OutputRule& rule, const Known& known, const ModelParameter& output, double value,
            const StreamResult* named) {
    return !rule.mayCoincide ||
           (isSame(value, known.value, summedPart) &&
            (!isRound(value) || (named && named == known.stream) || isBareQuantity(output.name)));
}

bool isFor(const OutputRule& rule, const ModelParameter& output) {
    return isSameDimension(output.dimensionality, parseUnit(rule.siUnit)->exponents) &&
           (!rule.isMeant || rule.isMeant(output));
}

/// Text and remedy of a warning.
using Slip = std::pair<std::string, std::string>;

std::string valueOf(double value, const OutputRule& rule) {
    return "the value, " + shortNumber(value, 7) + " " + rule.siUnit + ", is ";
}

/// For an output that is of one stream by its name, and of another one by its value. The states of a stream
/// without flow are arbitrary.
std::optional<Slip> wrongStream(const ModelParameter& output, double value, const StreamResult* named,
                                const UnitReview& review) {
    if (!named || named->totalFlow == 0)
        return std::nullopt;
    for (const OutputRule& rule : rules) {
        if (rule.remedy || !isFor(rule, output))
            continue;
        const UnitReview alone{review.unit, review.balance, review.compounds, std::span(&named, 1), {}};
        if (std::ranges::any_of(rule.known(alone),
                                [&](const Known& known) { return isSame(value, known.value); }))
            return std::nullopt;
        for (const Known& known : rule.known(review))
            if (known.stream && isSame(value, known.value, summedPart) &&
                !isPartOfName(*named, *known.stream))
                return Slip(valueOf(value, rule) + known.name + ", not of stream " + named->name,
                            "set it to that of stream " + named->name);
    }
    return std::nullopt;
}

/// For the value of an output, if the streams show that it is wrong.
std::optional<Slip> slipOf(const ModelParameter& output, double value, const UnitReview& review) {
    const StreamResult* const named = namedStream(output.name, review);
    if (auto slip = wrongStream(output, value, named, review))
        return slip;
    for (const OutputRule& rule : rules) {
        if (!isFor(rule, output))
            continue;
        for (const Known& known : rule.known(review))
            if (isSame(value, rule.factor * known.value + rule.offset) &&
                isSure(rule, known, output, value, named)) {
                if (!rule.remedy || (rule.factor != 1 && isGiven(rule.factor, review)))
                    return std::nullopt;
                return Slip(valueOf(value, rule) + known.name + rule.otherUnit, rule.remedy);
            }
    }
    return std::nullopt;
}

} // namespace

void addOutputWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    for (const ModelParameter& output : review.unit.parameters) {
        const auto* value = !output.isInput && output.value ? std::get_if<double>(&*output.value) : nullptr;
        // 0 often stands for a value that is not used.
        if (!value || *value == 0)
            continue;
        if (auto slip = slipOf(output, *value, review))
            warnings.push_back({review.unit.name, "parameter " + output.name, std::move(slip->first),
                                std::move(slip->second)});
        else if (isTemperature(output) && *value > highestTemperature)
            warnings.push_back({review.unit.name, "parameter " + output.name,
                                "the value, " + shortNumber(*value, 7) + " K, is no temperature of a process",
                                "look at what the script sets it to"});
    }
}

} // namespace solvane::host
