#include "MeanWarnings.h"

#include "Powers.h"
#include "cases/NumberText.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace solvane::host {

namespace {

/// By which part of R T, or of a temperature, a product misses what the script set.
constexpr double flashPart = 1e-6;
/// Of ideal gases, K.
constexpr double zeroOfEnthalpy = 298.15;

/// A sum that scripts make by mistake.
struct Mean {
    double value; ///< J/mol
    std::string text;
    const char* remedy;
};

/// The feeds with flow.
class Feeds {
public:
    explicit Feeds(const UnitReview& review)
        : enthalpy_(review.balance.reacts ? &StreamResult::enthalpyF : &StreamResult::enthalpy) {
        std::ranges::copy_if(review.feeds, std::back_inserter(feeds_),
                             [](const StreamResult* feed) { return feed->totalFlow > 0; });
    }

    double enthalpyOf(const StreamResult& stream) const { return stream.*enthalpy_; }

    template <class Value>
    double sum(const Value& value) const {
        double total = 0;
        for (const StreamResult* feed : feeds_)
            total += value(*feed);
        return total;
    }

    double flow() const {
        return sum([](const StreamResult& feed) { return feed.totalFlow; });
    }

    /// J/mol of all feeds together.
    double mixed() const {
        return sum([&](const StreamResult& feed) { return feed.totalFlow * enthalpyOf(feed); }) / flow();
    }

    /// K, weighted by the flows.
    double meanTemperature() const {
        return sum([](const StreamResult& feed) { return feed.totalFlow * feed.temperature; }) / flow();
    }

    bool hasOneTemperature() const {
        const auto [least, most] = std::ranges::minmax(feeds_, {}, &StreamResult::temperature);
        return most->temperature - least->temperature <= flashPart * most->temperature;
    }

    std::vector<Mean> wrongMeans(const StreamResult& product) const {
        static constexpr char weigh[] = "weight each feed by its flow: sum(F .* h) / sum(F)";
        const double total = sum([&](const StreamResult& feed) { return enthalpyOf(feed); });
        const double part = product.totalFlow / flow();
        std::vector<Mean> means{
            {0, "is not that of the feeds", "look at the variable that adds up the enthalpies of the feeds"},
            {total / flow(), "is the sum of the feeds' molar enthalpies over their flow", weigh},
            {total / static_cast<double>(feeds_.size()),
             "is the mean of the feeds' molar enthalpies, not weighted by their flows", weigh},
            {total, "is the sum of the feeds' molar enthalpies", weigh},
            {part * mixed(),
             "is that of the feeds, " + shortNumber(mixed(), 6) + " J/mol, times the part of the flow, " +
                 shortNumber(part, 4),
             "molar enthalpies are not split: set each product at that of the feeds"}};
        for (const StreamResult* feed : feeds_)
            means.push_back({feed->totalFlow * enthalpyOf(*feed) / flow(),
                             "is that of feed " + feed->name + " over the flow of all feeds",
                             "look at the loop that adds up the enthalpies of the feeds"});
        return means;
    }

private:
    double StreamResult::* enthalpy_;
    std::vector<const StreamResult*> feeds_;
};

bool isNear(double temperature, double other) {
    return std::abs(temperature - other) <= flashPart * other;
}

/// Whether the case asks for this temperature.
bool isInput(double temperature, const UnitReview& review) {
    return std::ranges::any_of(review.unit.parameters, [&](const ModelParameter& parameter) {
        const auto* value =
            parameter.isInput && parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
        return value && isNear(*value, temperature);
    });
}

} // namespace

void addMeanWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const Feeds feeds(review);
    if (!(feeds.flow() > 0) || isBalanced(review))
        return;
    for (const StreamResult* product : review.products) {
        const double tolerance = flashPart * gasConstant * product->temperature;
        const auto isSame = [&](double left, double right) { return std::abs(left - right) <= tolerance; };
        const double enthalpy = feeds.enthalpyOf(*product);
        // Right products have the enthalpy of all feeds together, or that of an ideal gas at its zero.
        if (product->totalFlow == 0 || isSame(enthalpy, feeds.mixed()) ||
            std::abs(product->temperature - zeroOfEnthalpy) < 1e-2)
            continue;
        for (const Mean& mean : feeds.wrongMeans(*product))
            if (isSame(enthalpy, mean.value)) {
                warnings.push_back({review.unit.name, "stream " + product->name,
                                    "the enthalpy, " + shortNumber(mean.value, 6) + " J/mol, " + mean.text,
                                    mean.remedy});
                break;
            }
    }
    const double mean = feeds.meanTemperature();
    if (feeds.hasOneTemperature() || isInput(mean, review) ||
        !std::ranges::all_of(review.products,
                             [&](const StreamResult* product) { return isNear(product->temperature, mean); }))
        return;
    warnings.push_back({review.unit.name, "balance",
                        "the enthalpies change by " + watts(gain(review.balance.enthalpy)) +
                            ": the products have the mean of the feeds' temperatures, " +
                            shortNumber(mean, 6) + " K",
                        "set them at the mean of the feeds' enthalpies"});
}

} // namespace solvane::host
