#include "Powers.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace solvane::host {

std::vector<Power> powersOf(const UnitResult& unit) {
    static const std::vector<double> dimension = parseUnit("W")->exponents;
    std::vector<Power> powers;
    for (const ModelParameter& parameter : unit.parameters) {
        const auto* value = parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
        if (value && std::isfinite(*value) && isSameDimension(parameter.dimensionality, dimension))
            powers.push_back({&parameter, *value});
    }
    return powers;
}

bool isNamedHeat(const Power& power) {
    constexpr std::array<std::string_view, 3> words{"duty", "heat", "cool"};
    return hasWord(power.parameter->name, words);
}

std::vector<double> efficienciesOf(const UnitResult& unit) {
    constexpr std::array<std::string_view, 2> words{"effic", "eta"};
    std::vector<double> efficiencies;
    for (const ModelParameter& input : unit.parameters) {
        const auto* value = input.isInput && input.value ? std::get_if<double>(&*input.value) : nullptr;
        if (value && *value > 0 && *value < 1 && hasWord(input.name, words) && !isOfDriver(input))
            efficiencies.push_back(*value);
    }
    return efficiencies;
}

bool isOfDriver(const ModelParameter& parameter) {
    constexpr std::array<std::string_view, 4> words{"mech", "motor", "driver", "electr"};
    return hasWord(parameter.name, words);
}

bool isSumOf(std::span<const Power> powers, double gain, double tolerance) {
    constexpr std::size_t most = 8; // there are 3^8 sums
    if (std::abs(gain) <= tolerance || powers.size() > most)
        return true;
    return !powers.empty() && std::ranges::any_of(std::array{-1, 0, 1}, [&](int sign) {
        return isSumOf(powers.subspan(1), gain - sign * powers.front().value, tolerance);
    });
}

double gain(const Flows& flows) {
    return flows.out - flows.in;
}

bool isBalanced(const UnitReview& review) {
    constexpr double roundedPart = 1e-2;
    constexpr double negligiblePart = 1e-4; // of the heat in the feeds
    const double gained = gain(review.balance.enthalpy);
    return isSumOf(powersOf(review.unit), gained,
                   std::max(negligiblePart * heatOf(review.feeds), roundedPart * std::abs(gained)));
}

double heatOf(std::span<const StreamResult* const> streams) {
    double heat = 0;
    for (const StreamResult* stream : streams)
        heat +=
            std::abs(stream->totalFlow) * (std::abs(stream->enthalpy) + gasConstant * stream->temperature);
    return heat;
}

std::string watts(double value) {
    return shortNumber(value, 6) + " W";
}

} // namespace solvane::host
