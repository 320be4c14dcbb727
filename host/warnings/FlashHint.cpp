#include "FlashHint.h"

#include "cases/NumberText.h"
#include "cases/UnitOfMeasure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <regex>
#include <vector>

namespace solvane::host {

namespace {

using Match = std::match_results<std::string_view::const_iterator>;

constexpr double thousand = 1000;

/// Numbers of messages have six digits.
bool isSame(double left, double right) {
    constexpr double part = 1e-5;
    return left != 0 && std::abs(left - right) <= part * std::abs(left);
}

bool isPressure(double value, const FailedUnit& failed) {
    return std::ranges::any_of(failed.results.streams,
                               [&](const StreamResult& stream) { return isSame(value, stream.pressure); }) ||
           std::ranges::any_of(failed.unit.parameters, [&](const ModelParameter& parameter) {
               const auto* number = parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
               return number && isSame(value, *number) &&
                      isSameDimension(parameter.dimensionality, parseUnit("Pa")->exponents);
           });
}

/// Those of the unit; none if not all are known, as at the first pass of a recycle.
std::vector<const StreamResult*> feedsOf(const FailedUnit& failed) {
    std::vector<const StreamResult*> feeds;
    for (const std::string& name : failed.unit.feeds) {
        const auto feed = std::ranges::find(failed.results.streams, name, &StreamResult::name);
        if (feed == failed.results.streams.end())
            return {};
        feeds.push_back(&*feed);
    }
    return feeds;
}

std::optional<StreamResult> mixtureOf(const std::vector<const StreamResult*>& feeds) {
    StreamResult mixture;
    mixture.name = "the mixture of the feeds";
    for (const StreamResult* feed : feeds) {
        mixture.totalFlow += feed->totalFlow;
        mixture.enthalpy += feed->totalFlow * feed->enthalpy;
        mixture.enthalpyF += feed->totalFlow * feed->enthalpyF;
    }
    if (!(mixture.totalFlow > 0))
        return std::nullopt;
    mixture.enthalpy /= mixture.totalFlow;
    mixture.enthalpyF /= mixture.totalFlow;
    return mixture;
}

/// Whose value it is by its digits, with another basis or unit.
std::string enthalpyOf(const StreamResult& stream, double value, bool withFormation) {
    const double own = withFormation ? stream.enthalpyF : stream.enthalpy;
    const double other = withFormation ? stream.enthalpy : stream.enthalpyF;
    if (isSame(value, other))
        return std::string(" has this 'enthalpy") + (withFormation ? "" : "F") +
               "': use 'enthalpyF' throughout, or 'enthalpy'";
    if (isSame(value, own / thousand))
        return " has a thousand times this: enthalpies are in J/mol, not in kJ/mol";
    if (stream.totalFlow != 1 && isSame(value, own * stream.totalFlow))
        return " carries this much in W: divide it by the flow, since flashes take J/mol";
    return {};
}

/// Zero lies within most ranges, and so do small parts of all values: only large ones are told.
std::string amountHint(const Match& match, const FailedUnit& failed) {
    const double value = std::stod(match[2].str()), least = std::stod(match[3].str()),
                 most = std::stod(match[4].str());
    const auto lies = [&](double part) { return part >= least && part <= most; };
    const std::optional<StreamResult> mixture = mixtureOf(feedsOf(failed));
    if (std::abs(value) <= 3 * std::max(std::abs(least), std::abs(most)) ||
        !(lies(value / thousand) || (mixture && lies(value / mixture->totalFlow))))
        return {};
    return "flashes take values per mol: look whether it is multiplied by 1000, or by the flow";
}

/// Another basis, another order, another unit.
std::string enthalpyHint(const Match& match, const FailedUnit& failed) {
    const bool withFormation = match[1] == "enthalpyF";
    const double value = std::stod(match[2].str());
    for (const StreamResult& stream : failed.results.streams)
        if (const std::string known = enthalpyOf(stream, value, withFormation); !known.empty())
            return "stream " + stream.name + known;
    const std::optional<StreamResult> mixture = mixtureOf(feedsOf(failed));
    if (mixture)
        if (const std::string known = enthalpyOf(*mixture, value, withFormation); !known.empty())
            return mixture->name + known;
    if (isPressure(value, failed))
        return "this value is a pressure: each value follows its name, as in 'pressure', P, 'enthalpy', h";
    return amountHint(match, failed);
}

bool isAbsent(const std::string& compound, const FailedUnit& failed) {
    const std::vector<std::string>& compounds = failed.results.compounds;
    const auto at = std::ranges::find(compounds, compound) - compounds.begin();
    const std::vector<const StreamResult*> feeds = feedsOf(failed);
    return at < std::ssize(compounds) && !feeds.empty() &&
           std::ranges::all_of(
               feeds,
               [&](const StreamResult* feed) {
                   return feed->fraction.at(static_cast<std::size_t>(at)) == 0;
               });
}

/// Of a negative one. How far it is below 0 shows whether an amount, or only its last part, is wrong.
std::string fractionHint(const Match& match, const FailedUnit& failed) {
    constexpr double rounding = 1e-12, farBelow = 0.2;
    const double lack = -std::stod(match[2].str());
    const std::string solver = match[3].str();
    const bool integrates = solver.starts_with("ode");
    if (lack < rounding)
        return "so little is rounding: write max(n, 0) for the flows n";
    if (integrates && lack > farBelow)
        return "a rate, or the step, is far too large: look at the units of R and E in "
               "exp(-E/(R*T)), at its sign, and at pressures in Pa or in bar";
    if (isAbsent(match[1].str(), failed))
        return "no feed has it, and yet it is used up: look for a rate that does not vanish with its "
               "reactants, and for a wrong sign, index or span";
    if (integrates)
        return "more is used up than there is: let each rate vanish with its reactants, look at its sign, "
               "and tighten RelTol and AbsTol";
    if (solver.empty())
        return "more is taken away than there is: look at signs, units and indices";
    return {};
}

std::string temperatureHint(const Match& match, const FailedUnit& failed) {
    const double value = std::stod(match[1].str());
    if (isPressure(value, failed))
        return "this value is a pressure: each value follows its name, as in 'temperature', T, 'pressure', P";
    constexpr double zeroOfCelsius = 273.15, coldest = 50;
    if (match[2].matched || value > coldest || value < -zeroOfCelsius)
        return {};
    return "temperatures are in K: " + match[1].str() + " degC are " + shortNumber(value + zeroOfCelsius, 6) +
           " K";
}

std::string pressureHint(const Match&, const FailedUnit&) {
    return "more pressure is lost than there is: look at the sign and the units in the pressure drop";
}

std::string trialHint(const Match& match, const FailedUnit&) {
    return match[1].str() +
           " tries such values on its way: start nearer to the solution, or search between two bounds";
}

/// By the message, in the order in which they are tried until one has a hint.
struct Row {
    std::regex message;
    std::string (*hint)(const Match& match, const FailedUnit& failed);
};

} // namespace

std::string flashHint(std::string_view message, const FailedUnit& failed) {
    static const std::array rows{
        Row{std::regex(
                R"(the (enthalpyF?) ([-+.e\d]+) at [-+.e\d]+ Pa lies outside ([-+.e\d]+) to ([-+.e\d]+))"),
            enthalpyHint},
        Row{std::regex(
                R"(the (entropyF?) ([-+.e\d]+) at [-+.e\d]+ Pa lies outside ([-+.e\d]+) to ([-+.e\d]+))"),
            amountHint},
        Row{std::regex(R"(the mole fraction of (.+), ([-+.e\d]+), is negative(?:, in a step of (\w+))?)"),
            fractionHint},
        Row{std::regex(R"(the temperature ([-+.e\d]+) K lies outside [^,;]*(, in a step of)?)"),
            temperatureHint},
        Row{std::regex(R"(the pressure -[-+.e\d]+ Pa is not positive)"), pressureHint},
        Row{std::regex(R"(^Failed to calculate .*, in a step of (f\w+)$)"), trialHint},
    };
    for (const Row& row : rows)
        if (Match match; std::regex_search(message.begin(), message.end(), match, row.message))
            if (std::string hint = row.hint(match, failed); !hint.empty())
                return hint;
    return {};
}

} // namespace solvane::host
