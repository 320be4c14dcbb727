#include "Variations.h"

#include "thermo/IdealGas.h"
#include "thermo/PropertyPackage.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace solvane::host {

std::vector<CaseVariation> withoutFlow(const Case& flowsheet) {
    std::vector<CaseVariation> variations;
    for (std::size_t i = 0; i < flowsheet.feeds.size(); ++i) {
        variations.push_back({"feed " + flowsheet.feeds[i].name + " without flow", flowsheet});
        variations.back().flowsheet.feeds[i].flow = 0;
    }
    if (variations.size() > 1) {
        variations.push_back({"all feeds without flow", flowsheet});
        for (FeedStream& feed : variations.back().flowsheet.feeds)
            feed.flow = 0;
    }
    return variations;
}

Case withReversedCompounds(const Case& flowsheet) {
    Case reversed = flowsheet;
    std::ranges::reverse(reversed.compounds);
    for (FeedStream& feed : reversed.feeds)
        std::ranges::reverse(feed.composition);
    return reversed;
}

std::vector<CaseVariation> withoutCompound(const Case& flowsheet) {
    std::vector<CaseVariation> variations;
    for (std::size_t i = 0; i < flowsheet.compounds.size(); ++i) {
        CaseVariation variation{std::string(flowsheet.compounds[i]->name) + " absent", flowsheet};
        const bool othersRemain = std::ranges::all_of(variation.flowsheet.feeds, [i](FeedStream& feed) {
            feed.composition[i] = 0;
            const double rest = std::reduce(feed.composition.begin(), feed.composition.end());
            for (double& fraction : feed.composition)
                fraction /= rest;
            return rest > 0;
        });
        if (othersRemain)
            variations.push_back(std::move(variation));
    }
    return variations;
}

std::vector<CaseVariation> inOnePhase(const Case& flowsheet) {
    struct Row {
        const char* name;
        double vaporFraction;
        double step; // K
    };
    constexpr std::array rows{Row{" as a liquid below its bubble point", 0, -5},
                              Row{" as a vapour above its dew point", 1, 5}};
    const PropertyPackage package(flowsheet.compounds);
    std::vector<CaseVariation> variations;
    for (std::size_t i = 0; i < flowsheet.feeds.size(); ++i)
        for (const Row& row : rows) {
            CaseVariation variation{"feed " + flowsheet.feeds[i].name + row.name, flowsheet};
            FeedStream& feed = variation.flowsheet.feeds[i];
            const FlashCondition given = feed.pressure
                                             ? FlashCondition{FlashVariable::pressure, *feed.pressure}
                                             : FlashCondition{FlashVariable::temperature, *feed.temperature};
            Equilibrium saturated;
            std::string error;
            if (!package.flash(feed.composition, given, {FlashVariable::vaporFraction, row.vaporFraction},
                               saturated, error))
                continue;
            feed.temperature = saturated.temperature + row.step;
            feed.pressure = saturated.pressure;
            feed.vaporFraction.reset();
            if (*feed.temperature >= lowestFitted && *feed.temperature <= highestFitted)
                variations.push_back(std::move(variation));
        }
    return variations;
}

std::vector<FeedInput> feedInputs(const Case& flowsheet) {
    struct Row {
        const char* name;
        std::optional<double> FeedStream::* condition;
    };
    constexpr std::array rows{Row{"temperature", &FeedStream::temperature},
                              Row{"pressure", &FeedStream::pressure},
                              Row{"vapour fraction", &FeedStream::vaporFraction}};
    std::vector<FeedInput> inputs;
    for (std::size_t i = 0; i < flowsheet.feeds.size(); ++i) {
        const FeedStream& feed = flowsheet.feeds[i];
        if (feed.flow > 0)
            inputs.push_back({"flow of feed " + feed.name, i, &FeedStream::flow, nullptr});
        for (const Row& row : rows) {
            const std::optional<double>& value = feed.*row.condition;
            const bool isLimit = row.condition == &FeedStream::vaporFraction && value == 1.0;
            if (value && *value > 0 && !isLimit)
                inputs.push_back(
                    {std::string(row.name) + " of feed " + feed.name, i, nullptr, row.condition});
        }
    }
    return inputs;
}

Case withChange(const Case& flowsheet, const FeedInput& input, double part) {
    Case changed = flowsheet;
    FeedStream& feed = changed.feeds[input.feed];
    (input.flow ? feed.*input.flow : *(feed.*input.condition)) *= 1 + part;
    return changed;
}

} // namespace solvane::host
