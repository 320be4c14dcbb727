#include "MeanWarnings.h"

#include "Powers.h"
#include "cases/NumberText.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace solvane::host {

namespace {

/// By which part of R T, or of a temperature, a product misses what the script set.
constexpr double flashPart = 1e-6;
/// Of ideal gases, K.
constexpr double zeroOfEnthalpy = 298.15;

/// Of mole fractions.
constexpr double clearDistance = 1e-2;

/// The largest difference of mole fractions.
double distance(const std::vector<double>& left, const std::vector<double>& right) {
    double largest = 0;
    for (std::size_t i = 0; i < left.size(); ++i)
        largest = std::max(largest, std::abs(left[i] - right[i]));
    return largest;
}

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

    /// K; weighted by the flows, the mass flows, and not at all.
    std::array<double, 3> meanTemperatures() const {
        const auto mean = [&](const auto& weight) {
            return sum([&](const StreamResult& feed) { return weight(feed) * feed.temperature; }) /
                   sum(weight);
        };
        return {mean([](const StreamResult& feed) { return feed.totalFlow; }),
                mean([](const StreamResult& feed) { return feed.massFlow; }),
                mean([](const StreamResult&) { return 1.0; })};
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
             "molar enthalpies are not split: set each product at that of the feeds"},
            {flow() * mixed(), "is the heat flow of the feeds in W",
             "divide it by their flow: sum(F .* h) / sum(F)"}};
        for (const StreamResult* feed : feeds_)
            means.push_back({feed->totalFlow * enthalpyOf(*feed) / flow(),
                             "is that of feed " + feed->name + " over the flow of all feeds",
                             "look at the loop that adds up the enthalpies of the feeds"});
        if (isMixture(product))
            for (const StreamResult* feed : feeds_)
                for (const StreamResult* used : feeds_)
                    means.push_back(
                        {mixed() + feed->totalFlow * (enthalpyOf(*used) - enthalpyOf(*feed)) / flow(),
                         "counts that of feed " + used->name + " in place of that of feed " + feed->name,
                         "look at which feed's enthalpy the script gets for each"});
        return means;
    }

private:
    /// Whether the product is all feeds together, and clearly none of them: one that passes through, heated
    /// or purified, may rightly have the enthalpy of its feed.
    bool isMixture(const StreamResult& product) const {
        std::vector<double> mixture(product.fraction.size());
        for (std::size_t i = 0; i < mixture.size(); ++i)
            mixture[i] =
                sum([&](const StreamResult& feed) { return feed.totalFlow * feed.fraction[i]; }) / flow();
        return distance(product.fraction, mixture) <= flashPart &&
               std::ranges::all_of(feeds_, [&](const StreamResult* feed) {
                   return distance(product.fraction, feed->fraction) >= clearDistance;
               });
    }

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

std::vector<Warning> wrongMeans(const UnitReview& review) {
    std::vector<Warning> warnings;
    const Feeds feeds(review);
    if (!(feeds.flow() > 0) || isBalanced(review))
        return warnings;
    for (const StreamResult* product : review.products) {
        const double tolerance = flashPart * gasConstant * product->temperature;
        const auto isSame = [&](double left, double right) { return std::abs(left - right) <= tolerance; };
        const double enthalpy = feeds.enthalpyOf(*product);
        // Right products have the enthalpy of all feeds together, or that of an ideal gas at its zero.
        if (!(product->totalFlow > 0) || isSame(enthalpy, feeds.mixed()) ||
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
    if (!warnings.empty() || feeds.hasOneTemperature())
        return warnings;
    for (const double mean : feeds.meanTemperatures())
        if (!isInput(mean, review) && std::ranges::all_of(review.products, [&](const StreamResult* product) {
                return isNear(product->temperature, mean);
            }))
            return {{review.unit.name, "balance",
                     "the enthalpies change by " + watts(gain(review.balance.enthalpy)) +
                         ": the products have the mean of the feeds' temperatures, " + shortNumber(mean, 6) +
                         " K",
                     "set them at the mean of the feeds' enthalpies"}};
    return warnings;
}

} // namespace solvane::host
