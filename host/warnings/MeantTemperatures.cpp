#include "MeantTemperatures.h"

#include "MixtureEnthalpy.h"
#include "Powers.h"
#include "cases/NumberText.h"
#include "cases/UnitOfMeasure.h"
#include "results/Balances.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace solvane::host {

namespace {

constexpr double zeroOfCelsius = 273.15;
/// By which part of the enthalpy between both temperatures the balance may miss: people round degrees.
constexpr double roundedPart = 1e-2;
constexpr double calculatedPart = 1e-3;

struct Shift {
    double step;
    const char* remedy;
};

constexpr std::array shifts{
    Shift{zeroOfCelsius, "temperatures of setProduct are in K, not in degC"},
    Shift{-zeroOfCelsius, "temperatures of setProduct and getFeedProp are in K: add 273.15 to none of them"},
};

std::string kelvin(double value) {
    return shortNumber(value, 7) + " K";
}

class Search {
public:
    explicit Search(const UnitReview& review)
        : review_(review), powers_(powersOf(review.unit)), gain_(gain(review.balance.enthalpy)) {}

    /// Whether the enthalpies balance with the products at other temperatures.
    template <class Temperature>
    bool balances(std::span<const StreamResult* const> products, double tolerance,
                  const Temperature& temperature) const {
        double change = 0;
        for (const StreamResult* product : products) {
            const auto enthalpy =
                mixtureEnthalpy(review_.compounds, product->fraction, product->pressure,
                                {FlashVariable::temperature, temperature(*product)},
                                review_.balance.reacts ? PhaseProperty::enthalpyF : PhaseProperty::enthalpy);
            if (!enthalpy)
                return false;
            change += product->totalFlow *
                      (*enthalpy - (review_.balance.reacts ? product->enthalpyF : product->enthalpy));
        }
        return change != 0 && isSumOf(powers_, gain_ + change, tolerance * std::abs(change));
    }

private:
    const UnitReview& review_;
    std::vector<Power> powers_;
    double gain_;
};

/// Whether the output is a temperature that only the product can have.
bool mayBeOf(const ModelParameter& parameter, const UnitReview& review) {
    const auto* value =
        !parameter.isInput && parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
    constexpr double part = 1e-6;
    const auto isAt = [&](const StreamResult* stream) {
        return std::abs(stream->temperature - *value) <= part * *value;
    };
    return value && *value > 0 && isSameDimension(parameter.dimensionality, parseUnit("K")->exponents) &&
           !isDifference(parameter.dimensionality) && std::ranges::none_of(review.feeds, isAt) &&
           std::ranges::none_of(review.products, isAt);
}

} // namespace

std::vector<Warning> meantTemperatures(const UnitReview& review) {
    if (isBalanced(review))
        return {};
    const Search search(review);
    std::vector<Warning> warnings;
    const auto add = [&](const StreamResult& product, double temperature, const std::string& whose,
                         const char* remedy) {
        warnings.push_back({review.unit.name, "stream " + product.name,
                            "the temperature is " + kelvin(product.temperature) +
                                ", but the unit's enthalpies balance at " + kelvin(temperature) + whose,
                            remedy});
    };
    for (const Shift& shift : shifts) {
        const auto meant = [&](const StreamResult& product) { return product.temperature + shift.step; };
        const auto addIfBalanced = [&](std::span<const StreamResult* const> products) {
            if (search.balances(products, roundedPart, meant))
                for (const StreamResult* product : products)
                    add(*product, meant(*product), "", shift.remedy);
        };
        for (std::size_t i = 0; i < review.products.size() && warnings.empty(); ++i)
            addIfBalanced(review.products.subspan(i, 1));
        if (warnings.empty() && review.products.size() > 1)
            addIfBalanced(review.products);
    }
    if (warnings.empty() && review.products.size() == 1)
        for (const ModelParameter& parameter : review.unit.parameters)
            if (mayBeOf(parameter, review)) {
                const double value = std::get<double>(*parameter.value);
                if (search.balances(review.products, calculatedPart,
                                    [&](const StreamResult&) { return value; }))
                    add(*review.products.front(), value, ", the value of parameter " + parameter.name,
                        "set the product at this temperature, or show the heat by an output in W");
            }
    return warnings;
}

} // namespace solvane::host
