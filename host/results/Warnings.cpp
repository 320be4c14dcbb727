#include "Warnings.h"

#include "Balances.h"
#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "thermo/IdealGas.h"

#include <array>
#include <cmath>
#include <numeric>
#include <optional>

namespace solvane::host {

namespace {

std::string number(double value) {
    return shortNumber(value, 7);
}

// Each rule returns the fault of a stream, if it has one.

std::optional<std::string> compositionFault(const StreamResult& stream) {
    const double total = std::reduce(stream.fraction.begin(), stream.fraction.end());
    if (std::abs(total - 1) <= compositionTolerance)
        return std::nullopt;
    return "the mole fractions sum to " + number(total) + ", not to 1";
}

std::optional<std::string> flowFault(const StreamResult& stream) {
    if (stream.totalFlow >= 0)
        return std::nullopt;
    return "the flow, " + number(stream.totalFlow) + " mol/s, must not be negative";
}

std::optional<std::string> temperatureFault(const StreamResult& stream) {
    if (stream.temperature >= lowestFitted && stream.temperature <= highestFitted)
        return std::nullopt;
    return "the temperature, " + number(stream.temperature) + " K, lies outside " + number(lowestFitted) +
           " to " + number(highestFitted) + " K, the range of the package's heat capacities";
}

constexpr std::array streamRules{compositionFault, flowFault, temperatureFault};

} // namespace

void addWarnings(const UnitResult& unit, const Balance& balance,
                 std::span<const StreamResult* const> products, std::vector<Warning>& warnings) {
    for (const StreamResult* product : products)
        for (const auto rule : streamRules)
            if (auto text = rule(*product))
                warnings.push_back({unit.name, "stream " + product->name, *std::move(text)});
    for (const ModelParameter& parameter : unit.parameters)
        if (!parameter.isInput && !isSet(parameter))
            warnings.push_back({unit.name, "parameter " + parameter.name,
                                "the output has no value: the script never set it"});
    // A source or a sink of the flowsheet conserves nothing.
    if (balance.mass.in != 0 && !products.empty() && !isKept(balance.mass))
        warnings.push_back(
            {unit.name, "balance",
             number(balance.mass.in) + " kg/s go in and " + number(balance.mass.out) + " kg/s come out"});
    else if (balance.reacts)
        for (const ElementFlow& element : balance.elements)
            if (!isKept(element.moles))
                warnings.push_back({unit.name, "balance",
                                    number(element.moles.in) + " mol/s of " + element.symbol + " go in and " +
                                        number(element.moles.out) + " mol/s come out"});
}

} // namespace solvane::host
