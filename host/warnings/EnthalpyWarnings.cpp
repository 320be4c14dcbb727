#include "EnthalpyWarnings.h"

#include "Powers.h"
#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "results/Balances.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace solvane::host {

namespace {

constexpr double thousand = 1000;
/// Of tabulated heats, in parts.
constexpr double reactionHeatError = 0.1;
/// By which part outputs may differ from the balance: some scripts calculate them by formulas of their own.
constexpr double unequalPart = 0.01;
/// By which part such formulas may be wrong where the states are unlike those for which they were written.
constexpr double slightPart = 0.05;
/// Of the heat in the feeds.
constexpr double negligiblePart = 1e-4;

constexpr char contradictionRemedy[] =
    "compare the states of the products with the script's energy balance, and show each heat and power in W";

/// Whether the sizes are the same; scripts count heat that is taken up or given off.
bool isSameSize(double left, double right) {
    return left != 0 && isKept({std::abs(left), std::abs(right)});
}

/// The parameter with this heat flow or power, of either sign. Null if there is none.
const ModelParameter* findPower(std::span<const Power> powers, double size) {
    const auto power =
        std::ranges::find_if(powers, [&](const Power& one) { return isSameSize(one.value, size); });
    return power == powers.end() ? nullptr : power->parameter;
}

/// Words in the names of heats and powers that a balance need not show.
constexpr std::array<std::string_view, 14> otherPowers{"reaction", "release", "fire",    "firing",    "fuel",
                                                       "electr",   "motor",   "driver",  "brake",     "exerg",
                                                       "loss",     "ideal",   "minimum", "isentropic"};

/// Whether the power of a machine differs from the gain by its losses: a driver gives more than the
/// streams take up, and gets less than they give off.
bool isWithLosses(const Power& power, double gained) {
    constexpr double least = 0.5; // of efficiencies
    const double part = std::abs(gained > 0 ? gained / power.value : power.value / gained);
    return !isNamedHeat(power) && part >= least && part <= 1;
}

/// The efficiency, an input, by which the power of a machine with one feed and one product differs from the
/// gain, if the product has the feed's entropy: losses in the machine raise it. Those of a driver do not.
std::optional<double> forgottenEfficiency(const Power& power, double gained, const UnitReview& review) {
    constexpr double part = 1e-4;
    if (review.feeds.size() != 1 || review.products.size() != 1 || review.balance.reacts ||
        isOfDriver(*power.parameter))
        return std::nullopt;
    const StreamResult& feed = *review.feeds.front();
    const StreamResult& product = *review.products.front();
    if (std::abs(product.entropy - feed.entropy) > part * gasConstant ||
        isSameSize(product.pressure, feed.pressure))
        return std::nullopt;
    const double ratio = std::abs(gained > 0 ? gained / power.value : power.value / gained);
    for (const double efficiency : efficienciesOf(review.unit))
        if (std::abs(efficiency - ratio) <= part)
            return efficiency;
    return std::nullopt;
}

/// Whether the power passes between streams, as in a heat exchanger.
bool isInternal(const Power& power, const UnitReview& review) {
    return std::ranges::any_of(review.products, [&](const StreamResult* product) {
        return std::ranges::any_of(review.feeds, [&](const StreamResult* feed) {
            const double change = product->totalFlow * product->enthalpy - feed->totalFlow * feed->enthalpy;
            return std::abs(std::abs(change) - std::abs(power.value)) <= unequalPart * std::abs(change);
        });
    });
}

/// Adds that the outputs contradict the balance.
void addContradiction(const UnitReview& review, std::span<const Power> powers,
                      std::vector<Warning>& warnings) {
    const double gained = gain(review.balance.enthalpy);
    const double tolerance = std::max(unequalPart * std::abs(gained), negligiblePart * heatOf(review.feeds));
    std::vector<Power> outputs;
    std::ranges::copy_if(powers, std::back_inserter(outputs),
                         [](const Power& power) { return !power.parameter->isInput; });
    if (outputs.empty() || isSumOf(powers, gained, tolerance))
        return;
    for (const Power& output : outputs)
        if (const auto efficiency = forgottenEfficiency(output, gained, review)) {
            warnings.push_back({review.unit.name, "parameter " + output.parameter->name,
                                "the product has the entropy of the feed, and its enthalpy changes by " +
                                    watts(gained) + "; this value, " + watts(output.value) +
                                    ", is that with the efficiency " + shortNumber(*efficiency, 4),
                                "set the product by its actual enthalpy, with the efficiency"});
            return;
        }
    if (std::ranges::any_of(outputs, [&](const Power& output) {
            return hasWord(output.parameter->name, otherPowers) || isWithLosses(output, gained) ||
                   isInternal(output, review);
        }))
        return;
    const bool isSlight = isSumOf(powers, gained, slightPart * std::abs(gained));
    if (outputs.size() == 1) {
        warnings.push_back({review.unit.name, "parameter " + outputs.front().parameter->name,
                            "the enthalpies change by " + watts(gained) + ", not by this value, " +
                                watts(outputs.front().value),
                            contradictionRemedy, isSlight});
        return;
    }
    std::string values;
    for (const Power& output : outputs)
        values += (values.empty() ? "" : ", ") + output.parameter->name + " " + watts(output.value);
    warnings.push_back(
        {review.unit.name, "balance",
         "the enthalpies change by " + watts(gained) + ", which is no sum of the outputs in W: " + values,
         contradictionRemedy, isSlight});
}

} // namespace

void addEnthalpyWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const Balance& balance = review.balance;
    const std::vector<Power> powers = powersOf(review.unit);
    const double gained = gain(balance.enthalpy);
    if (!std::isfinite(gained) || isKept(balance.enthalpy) || findPower(powers, gained))
        return;
    const auto warn = [&](const std::string& subject, std::string text, const char* remedy) {
        warnings.push_back({review.unit.name, subject, std::move(text), remedy});
    };
    const double sensible = gain(balance.sensible);
    const double reactionHeat = gained - sensible; // at the temperature of the heats of formation
    if (balance.reacts && isKept(balance.sensible))
        warn("balance",
             "the enthalpies close without those of formation only: the heat of reaction, " +
                 watts(reactionHeat) + ", is left out",
             "set the products by 'enthalpyF', not by 'enthalpy', or add the heat of reaction");
    else if (const ModelParameter* power = balance.reacts ? findPower(powers, sensible) : nullptr)
        warn("parameter " + power->name,
             "the enthalpies change by this value without those of formation, and by " + watts(gained) +
                 " with them",
             "calculate it with 'enthalpyF', not with 'enthalpy'");
    else if (balance.reacts &&
             std::abs(sensible / reactionHeat + 1 / thousand) < reactionHeatError / thousand)
        warn("balance",
             "the enthalpies without those of formation change by " + watts(sensible) +
                 ", a thousandth of the heat of reaction, " + watts(reactionHeat),
             "heats are in J/mol, not in kJ/mol");
    else if (const ModelParameter* tooSmall = findPower(powers, gained / thousand))
        warn("parameter " + tooSmall->name,
             "the enthalpies change by " + watts(gained) + ", a thousand times this value",
             "its values are in W, not in kW");
    else if (const ModelParameter* tooLarge = findPower(powers, gained * thousand))
        warn("parameter " + tooLarge->name,
             "the enthalpies change by " + watts(gained) + ", a thousandth of this value",
             "enthalpies are in J/mol, not in kJ/mol");
    else
        addContradiction(review, powers, warnings);
}

} // namespace solvane::host
