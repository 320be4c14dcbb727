#include "Warnings.h"

#include "EnthalpyWarnings.h"
#include "EntropyWarnings.h"
#include "MassWarnings.h"
#include "MeantTemperatures.h"
#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "results/Balances.h"
#include "results/ScriptError.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
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
    std::optional<double> state{}; ///< the temperature or pressure at fault
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
                       "temperatures are in K", stream.temperature};
}

/// A pressure in bar where Pa are expected.
std::optional<StreamFault> pressureFault(const StreamResult& stream, double lowestFeedPressure) {
    constexpr double suspect = 1e3;
    constexpr double usual = 1e4;
    if (stream.pressure >= suspect || lowestFeedPressure <= usual)
        return std::nullopt;
    return StreamFault{"the pressure, " + number(stream.pressure) +
                           " Pa, lies far below that of the feeds, " + number(lowestFeedPressure) + " Pa",
                       "pressures are in Pa: 1 bar is 1e5 Pa", stream.pressure};
}

/// Whether a warning says already that the number comes from a parameter.
bool isOfParameter(const StreamFault& fault, const UnitResult& unit, const std::vector<Warning>& warnings) {
    return fault.state && std::ranges::any_of(unit.parameters, [&](const ModelParameter& parameter) {
               return parameter.value == ParameterValue(*fault.state) &&
                      std::ranges::any_of(warnings, [&](const Warning& warning) {
                          return warning.unit == unit.name &&
                                 warning.subject == "parameter " + parameter.name;
                      });
           });
}

constexpr std::array streamRules{compositionFault, flowFault, temperatureFault, pressureFault};

/// Adds one cause only: others may be its consequences.
void addBalanceWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    if (!addMassWarnings(review, warnings))
        return;
    const std::size_t before = warnings.size();
    addEnthalpyWarnings(review, warnings);
    if (warnings.size() == before)
        addEntropyWarnings(review, warnings);
}

/// A source or a sink of the flowsheet conserves nothing, and wrong fractions no balance.
bool hasBalance(const UnitReview& review) {
    return review.balance.mass.in != 0 && !review.products.empty() &&
           std::ranges::none_of(review.products, [](const StreamResult* product) {
               return compositionFault(*product, 0).has_value();
           });
}

} // namespace

void addScriptWarnings(const UnitResult& unit, std::vector<Warning>& warnings) {
    for (ScriptWarning& warning : scriptWarnings(unit))
        warnings.push_back({unit.name, "script", std::move(warning.text), std::move(warning.remedy)});
}

void addWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const UnitResult& unit = review.unit;
    std::vector<Warning> meant = hasBalance(review) && isKept(review.balance.mass) ? meantTemperatures(review)
                                                                                   : std::vector<Warning>();
    const double lowestFeedPressure =
        review.feeds.empty()
            ? 0
            : (*std::ranges::min_element(review.feeds, {}, &StreamResult::pressure))->pressure;
    for (const StreamResult* product : review.products) {
        const std::string subject = "stream " + product->name;
        for (const auto rule : streamRules)
            if (auto fault = rule(*product, lowestFeedPressure);
                fault && !isOfParameter(*fault, unit, warnings) &&
                std::ranges::find(meant, subject, &Warning::subject) == meant.end())
                warnings.push_back({unit.name, subject, std::move(fault->text), std::move(fault->remedy)});
    }
    const bool isExplained = !meant.empty();
    std::ranges::move(meant, std::back_inserter(warnings));
    for (const ModelParameter& parameter : unit.parameters)
        if (!parameter.isInput && !isSet(parameter))
            warnings.push_back({unit.name, "parameter " + parameter.name,
                                "the output has no value: the script never set it, or set it to NaN",
                                "call setParameter for it, or remove it"});
    if (hasBalance(review) && !isExplained)
        addBalanceWarnings(review, warnings);
}

} // namespace solvane::host
