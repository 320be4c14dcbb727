#include "Variable.h"

#include "cases/NameList.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"
#include "channel/Hints.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace solvane::host {

namespace {

struct Condition {
    const char* name;
    FeedQuantity quantity;
    std::optional<double> FeedStream::* value;
    const char* unit;
    std::optional<double> maximum;
};

constexpr std::array conditions{
    Condition{"temperature", FeedQuantity::temperature, &FeedStream::temperature, "K", {}},
    Condition{"pressure", FeedQuantity::pressure, &FeedStream::pressure, "Pa", {}},
    Condition{"vaporFraction", FeedQuantity::vaporFraction, &FeedStream::vaporFraction, "1", 1.0},
};

std::optional<ParameterValue> limit(std::optional<double> value) {
    return value ? std::optional<ParameterValue>(*value) : std::nullopt;
}

Variable feedVariable(const FeedStream& feed, std::size_t place, const std::string& quantity,
                      FeedQuantity kind, const char* unit, std::optional<double> maximum) {
    Variable variable{.name = feed.name + "." + quantity, .quantity = kind, .owner = place};
    variable.values.dimensionality = parseUnit(unit)->exponents;
    variable.values.minimum = 0.0;
    variable.values.maximum = limit(maximum);
    return variable;
}

void addFeed(const Case& flowsheet, std::size_t place, std::vector<Variable>& variables) {
    const FeedStream& feed = flowsheet.feeds[place];
    for (const Condition& one : conditions)
        if (feed.*one.value)
            variables.push_back(feedVariable(feed, place, one.name, one.quantity, one.unit, one.maximum));
    variables.push_back(feedVariable(feed, place, "flow", FeedQuantity::flow, "mol/s", {}));
    for (std::size_t i = 0; i < flowsheet.compounds.size(); ++i) {
        const std::string name = "x(" + std::string(flowsheet.compounds[i]->name) + ")";
        variables.push_back(feedVariable(feed, place, name, FeedQuantity::fraction, "1", 1.0));
        variables.back().compound = i;
    }
}

} // namespace

std::string parameterName(const Case& flowsheet, std::size_t unit, const std::string& parameter) {
    return flowsheet.isFlowsheet ? flowsheet.units[unit].name + "." + parameter : parameter;
}

std::string unknownName(const std::string& what, const std::string& name,
                        const std::vector<std::string>& known) {
    const std::string meant = probableName(known, name);
    return "the " + what + " \"" + name + "\" is unknown" +
           (meant.empty() ? "; " + what + "s: " + nameList(known) : "; did you mean \"" + meant + "\"?");
}

std::vector<Variable> variablesOf(const Case& flowsheet, const UnitParameters& parameters) {
    std::vector<Variable> variables;
    for (std::size_t unit = 0; unit < parameters.size(); ++unit)
        for (const ModelParameter& parameter : parameters[unit])
            if (parameter.isInput)
                variables.push_back({.name = parameterName(flowsheet, unit, parameter.name),
                                     .owner = unit,
                                     .values = parameter});
    for (std::size_t feed = 0; feed < flowsheet.feeds.size(); ++feed)
        addFeed(flowsheet, feed, variables);
    return variables;
}

bool findVariable(const std::vector<Variable>& variables, const std::string& name, Variable& variable,
                  std::string& error) {
    const auto found =
        std::ranges::find_if(variables, [&](const Variable& one) { return isSameName(one.name, name); });
    if (found == variables.end()) {
        std::vector<std::string> known;
        std::ranges::transform(variables, std::back_inserter(known), &Variable::name);
        error = unknownName("variable", name, known);
        return false;
    }
    variable = *found;
    return true;
}

} // namespace solvane::host
