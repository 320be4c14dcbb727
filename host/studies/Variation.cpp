#include "Variation.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <map>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;

struct Condition {
    const char* key;
    std::optional<double> FeedStream::* value;
};

constexpr std::array conditions{Condition{"temperature", &FeedStream::temperature},
                                Condition{"pressure", &FeedStream::pressure},
                                Condition{"vaporFraction", &FeedStream::vaporFraction}};

bool isOfMass(const std::string& flowUnit) {
    return !flowUnit.empty() && isSameDimension(parseUnit(flowUnit)->exponents, massFlowDimension);
}

/// What a point says of one feed beyond its conditions.
struct FeedChange {
    std::map<std::size_t, double> fractions{}; ///< by compound
    std::optional<double> flow{};
    bool isMassFlow = false;
};

bool setFractions(const std::map<std::size_t, double>& given, FeedStream& feed, std::string& error) {
    double givenSum = 0;
    double restSum = 0;
    for (std::size_t i = 0; i < feed.composition.size(); ++i)
        (given.contains(i) ? givenSum : restSum) += given.contains(i) ? given.at(i) : feed.composition[i];
    const auto fail = [&](const char* why) {
        error = "the given mole fractions of \"" + feed.name + "\" sum to " + shortNumber(givenSum, 10) + why;
        return false;
    };
    if (givenSum > 1 + compositionTolerance)
        return fail(", above 1");
    if (restSum == 0 && givenSum < 1 - compositionTolerance)
        return fail(", and no other compound is there to fill the sum to 1");
    for (std::size_t i = 0; i < feed.composition.size(); ++i)
        feed.composition[i] = given.contains(i) ? given.at(i)
                              : restSum == 0    ? 0
                                                : feed.composition[i] * std::max(1 - givenSum, 0.0) / restSum;
    return true;
}

bool changeFeed(const std::vector<const Compound*>& compounds, const FeedChange& change, FeedStream& feed,
                std::string& error) {
    const double formerMass = feed.flow * molarMass(compounds, feed.composition);
    if (!change.fractions.empty() && !setFractions(change.fractions, feed, error))
        return false;
    if (change.flow)
        feed.flow = *change.flow / (change.isMassFlow ? molarMass(compounds, feed.composition) : 1);
    else if (!change.fractions.empty() && isOfMass(feed.flowUnit))
        feed.flow = formerMass / molarMass(compounds, feed.composition);
    return true;
}

void setParameter(std::vector<ParameterSetting>& settings, const std::string& name, ParameterValue value) {
    const auto found = std::ranges::find_if(
        settings, [&](const ParameterSetting& setting) { return isSameName(setting.name, name); });
    if (found == settings.end())
        settings.push_back({name, std::move(value)});
    else
        *found = {found->name, std::move(value)};
}

/// Sets a condition, or notes the change of a flow or a fraction.
bool setFeedValue(const Axis& axis, double value, FeedStream& feed, FeedChange& change, std::string& error) {
    const auto positive = [&](std::optional<double>& condition) {
        condition = value;
        if (value <= 0)
            error = axis.variable.name + " must be above 0";
        return value > 0;
    };
    switch (*axis.variable.quantity) {
    case FeedQuantity::temperature:
        return positive(feed.temperature);
    case FeedQuantity::pressure:
        return positive(feed.pressure);
    case FeedQuantity::vaporFraction:
        feed.vaporFraction = value;
        return true;
    case FeedQuantity::flow:
        change.flow = value;
        change.isMassFlow = axis.isMassFlow;
        return true;
    case FeedQuantity::fraction:
        change.fractions[axis.variable.compound] = value;
        return true;
    }
    return false;
}

Json feedJson(const FeedStream& feed) {
    Json json{{"flow", feed.flow}, {"composition", feed.composition}};
    for (const Condition& condition : conditions)
        if (const auto& value = feed.*condition.value)
            json[condition.key] = *value;
    return json;
}

void applyFeed(const Json& json, FeedStream& feed) {
    for (const Condition& condition : conditions)
        if (json.contains(condition.key))
            feed.*condition.value = json.at(condition.key).get<double>();
    feed.flow = json.at("flow").get<double>();
    feed.composition = json.at("composition").get<std::vector<double>>();
}

ParameterValue parameterValue(const Json& json) {
    if (json.is_boolean())
        return json.get<bool>();
    if (json.is_number_integer())
        return json.get<std::int32_t>();
    if (json.is_number())
        return json.get<double>();
    return json.get<std::string>();
}

} // namespace

bool vary(const Case& flowsheet, const std::vector<Axis>& axes, const Point& point, Variation& variation,
          std::string& error) {
    variation.feeds = flowsheet.feeds;
    variation.parameters.clear();
    for (const UnitCase& unit : flowsheet.units)
        variation.parameters.push_back(unit.parameters);
    std::vector<FeedChange> changes(variation.feeds.size());
    for (std::size_t i = 0; i < axes.size(); ++i) {
        const Variable& variable = axes[i].variable;
        ParameterValue value;
        if (!readValue(axes[i], point[i], value, error))
            return false;
        if (!variable.quantity)
            setParameter(variation.parameters[variable.owner], variable.values.name, std::move(value));
        else if (!setFeedValue(axes[i], std::get<double>(value), variation.feeds[variable.owner],
                               changes[variable.owner], error))
            return false;
    }
    for (std::size_t i = 0; i < changes.size(); ++i)
        if (!changeFeed(flowsheet.compounds, changes[i], variation.feeds[i], error))
            return false;
    return true;
}

std::string variationLine(const Variation& variation) {
    Json json{{"feeds", Json::array()}, {"parameters", Json::array()}};
    for (const FeedStream& feed : variation.feeds)
        json["feeds"].push_back(feedJson(feed));
    for (const auto& settings : variation.parameters) {
        Json& values = json["parameters"].emplace_back(Json::object());
        for (const ParameterSetting& setting : settings)
            std::visit([&](const auto& value) { values[setting.name] = value; }, setting.value);
    }
    return json.dump() + "\n";
}

void applyLine(const std::string& line, Case& flowsheet) {
    const Json json = Json::parse(line);
    for (std::size_t i = 0; i < flowsheet.feeds.size(); ++i)
        applyFeed(json.at("feeds").at(i), flowsheet.feeds[i]);
    for (std::size_t i = 0; i < flowsheet.units.size(); ++i) {
        std::vector<ParameterSetting>& settings = flowsheet.units[i].parameters;
        settings.clear();
        for (const auto& [name, value] : json.at("parameters").at(i).items())
            settings.push_back({name, parameterValue(value)});
    }
}

} // namespace solvane::host
