#include "PlainNumbers.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>

namespace solvane::host {

namespace {

/// The numbers in an SI unit that a process may have, and the unit that others probably are in.
struct UsualRange {
    const char* name; ///< of the quantity
    char symbol;
    const char* siUnit;
    double least;
    double most;
    const char* otherUnit;
    double leastThird; ///< from which on the third one is as probable
    const char* thirdUnit;
};

constexpr double never = std::numeric_limits<double>::infinity();
constexpr UsualRange temperatures{"temperature", 'T', "K", 100, 5000, "degC", never, ""};
constexpr UsualRange pressures{"pressure", 'P', "Pa", 1e3, 1e12, "bar", 50, "kPa"};
/// A drop below both limits has no effect on a process. Where the pressure is lower, as in flues, some Pa
/// count.
constexpr double leastDrop = 100;            // Pa
constexpr double leastPartOfPressure = 1e-4; // of the lowest of the feeds

/// A state of a feed, as a case states it.
struct FeedNumber {
    const UsualRange& range;
    std::optional<double> FeedStream::* value;
    std::string FeedStream::* unit;
};

constexpr std::array feedNumbers{
    FeedNumber{temperatures, &FeedStream::temperature, &FeedStream::temperatureUnit},
    FeedNumber{pressures, &FeedStream::pressure, &FeedStream::pressureUnit},
};

/// Words in the names of temperatures and pressures that may be small, or of none that a stream has.
constexpr std::array<std::string_view, 24> otherQuantities{
    "drop",  "diff",    "rise",      "approach", "loss",       "change", "delta",    "tol",
    "step",  "partial", "vapor",     "vapour",   "activation", "vacuum", "range",    "lift",
    "glide", "span",    "superheat", "subcool",  "lmtd",       "margin", "increase", "decrease"};

/// Whether the parameter is what a unit changes the pressure by, such as "pressure drop", "dP of the tubes".
bool isPressureDrop(const ModelParameter& parameter) {
    constexpr std::array<std::string_view, 4> drops{"drop", "loss", "rise", "difference"};
    constexpr std::array<std::string_view, 2> accuracies{"tol", "step"};
    const std::string& name = parameter.name;
    return (name.starts_with("dP") || name.starts_with("dp") || name.starts_with("DP") ||
            hasWord(name, drops)) &&
           !hasWord(name, accuracies) &&
           isSameDimension(parameter.dimensionality, parseUnit(pressures.siUnit)->exponents);
}

/// Whether the parameter is the temperature or pressure of a stream or vessel, such as "outlet pressure",
/// "T2".
bool isOfState(const ModelParameter& parameter, const UsualRange& range) {
    const std::string& name = parameter.name;
    const bool isSymbol =
        name.starts_with(range.symbol) &&
        (name.size() == 1 || std::string_view("_0123456789").find(name[1]) != std::string_view::npos);
    return (isSymbol || hasWord(name, std::array<std::string_view, 1>{range.name})) &&
           isSameDimension(parameter.dimensionality, parseUnit(range.siUnit)->exponents) &&
           !isDifference(parameter.dimensionality) && !hasWord(name, otherQuantities);
}

/// Adds that the number was probably in another unit.
void addPlainNumber(const std::string& unit, const std::string& subject, const std::string& what,
                    double value, const UsualRange& range, std::vector<Warning>& warnings) {
    const std::string shown = shortNumber(value, 7);
    const auto with = [&](const char* other) { return "\"" + shown + " " + other + "\""; };
    warnings.push_back(
        {unit, subject,
         "the " + what + ", " + shown + ", has no unit and is read as " + shown + " " + range.siUnit,
         "state its unit, as in " + with(range.otherUnit) +
             (value < range.leastThird ? "" : " or " + with(range.thirdUnit))});
}

bool isUnusual(double value, const UsualRange& range) {
    return value < range.least || value > range.most;
}

/// Of the feeds whose states are known; 0 if there are none.
double lowestPressure(const UnitCase& unit, std::span<const StreamResult> streams) {
    double lowest = 0;
    for (const PortConnection& port : unit.feeds) {
        const auto feed = std::ranges::find(streams, port.stream, &StreamResult::name);
        if (feed != streams.end() && (lowest == 0 || feed->pressure < lowest))
            lowest = feed->pressure;
    }
    return lowest;
}

/// Whether the case states the value of the parameter as a number without a unit.
bool isPlainNumber(const UnitCase& unit, const std::string& parameter) {
    const auto isNamed = [&](const auto& one) { return isSameName(one.name, parameter); };
    const auto setting = std::ranges::find_if(unit.parameters, isNamed);
    if (setting != unit.parameters.end())
        return setting->isPlainNumber;
    const auto* model = std::get_if<UnitModel>(&unit.model);
    return model && std::ranges::any_of(model->parameters, [&](const ModelParameter& one) {
               return isNamed(one) && one.isPlainNumber;
           });
}

} // namespace

bool isTemperature(const ModelParameter& parameter) {
    return isOfState(parameter, temperatures);
}

bool isPressure(const ModelParameter& parameter) {
    return isOfState(parameter, pressures);
}

void addFeedWarnings(const Case& flowsheet, std::vector<Warning>& warnings) {
    std::vector<std::string> unused;
    std::ranges::transform(flowsheet.feeds, std::back_inserter(unused), &FeedStream::name);
    for (const UnitCase& unit : flowsheet.units)
        for (const PortConnection& port : unit.feeds) {
            std::erase(unused, port.stream);
            const auto feed = std::ranges::find(flowsheet.feeds, port.stream, &FeedStream::name);
            if (feed == flowsheet.feeds.end())
                continue;
            for (const FeedNumber& one : feedNumbers)
                if (const std::optional<double>& value = (*feed).*one.value;
                    value && ((*feed).*one.unit).empty() && isUnusual(*value, one.range))
                    addPlainNumber(unit.name, "stream " + feed->name, one.range.name, *value, one.range,
                                   warnings);
        }
    for (const std::string& name : unused)
        warnings.push_back({"", "stream " + name, "it feeds no unit", "connect it to a port, or remove it"});
}

void addParameterWarnings(const UnitCase& unit, const UnitResult& result,
                          std::span<const StreamResult> streams, std::vector<Warning>& warnings) {
    const double mostNegligible = std::min(leastDrop, leastPartOfPressure * lowestPressure(unit, streams));
    for (const ModelParameter& parameter : result.parameters) {
        const auto* value =
            parameter.isInput && parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
        // 0 often stands for a value that is not used.
        if (!value || *value == 0 || !isPlainNumber(unit, parameter.name))
            continue;
        const auto warn = [&](const UsualRange& range) {
            addPlainNumber(unit.name, "parameter " + parameter.name, "value", *value, range, warnings);
        };
        for (const UsualRange* range : {&temperatures, &pressures})
            if (isOfState(parameter, *range) && isUnusual(*value, *range))
                warn(*range);
        if (isPressureDrop(parameter) && std::abs(*value) < mostNegligible)
            warn(pressures);
    }
}

} // namespace solvane::host
