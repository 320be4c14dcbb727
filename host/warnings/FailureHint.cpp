#include "FailureHint.h"

#include "cases/UnitOfMeasure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <regex>

namespace solvane::host {

namespace {

/// By a part of the message.
struct Row {
    std::string_view message;
    std::string_view hint;
};

constexpr std::string_view notListed = "a script finds the files that the model lists: under \"files\" in a "
                                       "case, on the tab Files in the window";
constexpr std::string_view noTables =
    "Octave lacks it; csvread(file, rows, columns) or dlmread reads numbers here and in Matlab";

constexpr std::array rows{
    Row{"Vapor phase not found for vapor phase flash constraint",
        "in setProduct, 'vaporFraction' must be the first condition, and the first phase a vapour; otherwise "
        "find the state by flashEquilibrium, and set its pressure and enthalpy"},
    Row{"unable to find file", notListed},
    Row{"unable to open file", notListed},
    Row{"'readtable' undefined", noTables},
    Row{"'readmatrix' undefined", noTables},
    Row{"; the unit has no such port", "the unit's feeds are those that the case lists under \"feeds\", its "
                                       "products those under \"products\""},
};

/// Numbers of messages have six digits.
bool isSame(double left, double right) {
    constexpr double part = 1e-5;
    return left != 0 && std::abs(left - right) <= part * std::abs(left);
}

bool isPressure(double value, const std::vector<StreamResult>& streams, const UnitResult& unit) {
    return std::ranges::any_of(streams,
                               [&](const StreamResult& stream) { return isSame(value, stream.pressure); }) ||
           std::ranges::any_of(unit.parameters, [&](const ModelParameter& parameter) {
               const auto* number = parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
               return number && isSame(value, *number) &&
                      isSameDimension(parameter.dimensionality, parseUnit("Pa")->exponents);
           });
}

/// Why an enthalpy lies out of range: another basis, another order, another unit.
std::string enthalpyHint(std::string_view message, const std::vector<StreamResult>& streams,
                         const UnitResult& unit) {
    static const std::regex range(
        R"(the (enthalpyF?) ([-+.e\d]+) at [-+.e\d]+ Pa lies outside ([-+.e\d]+) to ([-+.e\d]+))");
    std::match_results<std::string_view::const_iterator> match;
    if (!std::regex_search(message.begin(), message.end(), match, range))
        return {};
    const bool withFormation = match[1] == "enthalpyF";
    const double value = std::stod(match[2].str()), least = std::stod(match[3].str()),
                 most = std::stod(match[4].str());
    const auto ofOtherBasis = std::ranges::find_if(streams, [&](const StreamResult& stream) {
        return isSame(value, withFormation ? stream.enthalpy : stream.enthalpyF);
    });
    if (ofOtherBasis != streams.end())
        return "stream " + ofOtherBasis->name + " has this 'enthalpy" + (withFormation ? "" : "F") +
               "': use 'enthalpyF' throughout, or 'enthalpy'";
    if (isPressure(value, streams, unit))
        return "this value is a pressure: each value follows its name, as in 'pressure', P, 'enthalpy', h";
    constexpr double thousand = 1000;
    const double farthest =
        3 * std::max(std::abs(least), std::abs(most)); // zero lies within, and so do thousandths
    if (std::abs(value) > farthest && value / thousand >= least && value / thousand <= most)
        return "a thousandth lies within: enthalpies are in J/mol, as all of the script's values";
    return {};
}

} // namespace

std::string failureHint(std::string_view message, const std::vector<StreamResult>& streams,
                        const UnitResult& unit) {
    const auto row =
        std::ranges::find_if(rows, [&](const Row& one) { return message.find(one.message) != message.npos; });
    return row == rows.end() ? enthalpyHint(message, streams, unit) : std::string(row->hint);
}

} // namespace solvane::host
