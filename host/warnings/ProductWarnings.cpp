#include "ProductWarnings.h"

#include "MassRemedy.h"
#include "Powers.h"
#include "cases/NumberText.h"
#include "results/Balances.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace solvane::host {

namespace {

std::string number(double value) {
    return shortNumber(value, 7);
}

std::string rate(double flow) {
    return number(flow) + " mol/s";
}

double sumOf(const std::vector<double>& fractions) {
    return std::reduce(fractions.begin(), fractions.end());
}

/// Whether the masses close with all compositions divided by their sums.
bool closesIfDivided(const UnitReview& review) {
    double mass = 0;
    for (const StreamResult* product : review.products)
        mass +=
            product->totalFlow * molarMass(review.compounds, product->fraction) / sumOf(product->fraction);
    return isKept({review.balance.mass.in, mass});
}

// Each rule returns the fault of a product, if it has one.

std::optional<ProductFault> compositionFault(const StreamResult& product, const UnitReview& review) {
    if (sumsToOne(product))
        return std::nullopt;
    const Balance& balance = review.balance;
    const double total = sumOf(product.fraction);
    std::string remedy = "divide the composition by its sum: x/sum(x)";
    const std::string open = openElements(balance);
    if (!balance.elements.empty() &&
        std::ranges::all_of(balance.elements, [](const ElementFlow& one) { return isKept(one.moles); }))
        remedy = "flow times fractions keeps each element: set the flow to the sum of the moles, " +
                 rate(product.totalFlow * total) + ", and divide them by it";
    else if (!open.empty() && !closesIfDivided(review))
        remedy = "with these fractions the balance is open in " + open + " only: look at the stoichiometry";
    return ProductFault{"the mole fractions sum to " + number(total) + ", not to 1", std::move(remedy)};
}

std::optional<ProductFault> flowFault(const StreamResult& product, const UnitReview& review) {
    if (product.totalFlow >= 0)
        return std::nullopt;
    const Flows& moles = review.balance.moles;
    std::string remedy = "let the script refuse what makes it negative, by error";
    const auto largest = std::ranges::max_element(review.products, {}, &StreamResult::totalFlow);
    if (const auto flow = closingFlow(review, product))
        remedy = "the balance closes with " + rate(*flow) + ": look at its formula";
    else if (isKept(moles) && (*largest)->totalFlow > moles.in)
        remedy = "stream " + (*largest)->name + " has " + rate((*largest)->totalFlow) +
                 ", more than all feeds, " + rate(moles.in) + ": look at how the flow is split";
    return ProductFault{"the flow, " + rate(product.totalFlow) + ", must not be negative", std::move(remedy)};
}

/// A pressure in bar where Pa are expected.
std::optional<ProductFault> pressureFault(const StreamResult& product, const UnitReview& review) {
    constexpr double suspect = 1e3;
    constexpr double usual = 1e4;
    if (review.feeds.empty() || product.pressure >= suspect)
        return std::nullopt;
    const double lowest = (*std::ranges::min_element(review.feeds, {}, &StreamResult::pressure))->pressure;
    if (lowest <= usual)
        return std::nullopt;
    return ProductFault{"the pressure, " + number(product.pressure) +
                            " Pa, lies far below that of the feeds, " + number(lowest) + " Pa",
                        "pressures are in Pa: 1 bar is 1e5 Pa", product.pressure};
}

/// Whose flow in mol/s the number is; empty if it is none's.
std::string flowOf(double number, const UnitReview& review) {
    constexpr double part = 1e-6;
    for (const StreamResult* feed : review.feeds)
        for (std::size_t i = 0; i < review.compounds.size(); ++i)
            if (std::abs(feed->totalFlow * feed->fraction[i] - number) <= part * number)
                return std::string(review.compounds[i]->name) + " in stream " + feed->name;
    return {};
}

/// A product may have been set by its temperature or its enthalpy.
std::string temperatureRemedy(const StreamResult& product, const UnitReview& review) {
    constexpr double thousand = 1000;
    if (const std::string whose = flowOf(product.temperature, review); !whose.empty())
        return "this is the flow of " + whose + ", in mol/s: look at the index";
    const Flows& enthalpy = review.balance.sensible;
    return enthalpy.in != 0 && isKept({thousand * enthalpy.in, enthalpy.out})
               ? "the products have a thousand times the enthalpy of the feeds, " + watts(enthalpy.in) +
                     ": enthalpies are in J/mol"
               : "temperatures are in K, enthalpies in J/mol";
}

std::optional<ProductFault> temperatureFault(const StreamResult& product, const UnitReview& review) {
    if (product.temperature >= lowestFitted && product.temperature <= highestFitted)
        return std::nullopt;
    return ProductFault{"the temperature, " + number(product.temperature) + " K, lies outside " +
                            number(lowestFitted) + " to " + number(highestFitted) +
                            " K, the range of the package's heat capacities",
                        temperatureRemedy(product, review), product.temperature};
}

/// The temperature of a flash follows from its pressure.
constexpr std::array rules{compositionFault, flowFault, pressureFault, temperatureFault};

} // namespace

bool sumsToOne(const StreamResult& stream) {
    return std::abs(sumOf(stream.fraction) - 1) <= compositionTolerance;
}

std::optional<ProductFault> productFault(const StreamResult& product, const UnitReview& review) {
    for (const auto rule : rules)
        if (auto fault = rule(product, review))
            return fault;
    return std::nullopt;
}

} // namespace solvane::host
