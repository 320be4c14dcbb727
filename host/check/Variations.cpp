#include "Variations.h"

#include "cases/NumberText.h"
#include "thermo/IdealGas.h"
#include "thermo/PropertyPackage.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace solvane::host {

namespace {

/// One of the two phases that a feed can be in alone.
struct Side {
    const char* name;
    double vaporFraction;     ///< where it begins
    double temperatureStep;   ///< from there into it, K
    double pressureFactor;    ///< likewise
    FlashCondition farInside; ///< where nearly all feeds have it
};

constexpr std::array sides{
    Side{" as a liquid below its bubble point", 0, -5, 1.2, {FlashVariable::temperature, lowestFitted + 5}},
    Side{" as a vapour above its dew point", 1, 5, 0.8, {FlashVariable::pressure, 1e5}},
};

bool isWithinData(double temperature) {
    return temperature >= lowestFitted && temperature <= highestFitted;
}

bool readState(const PropertyPackage& package, const FeedStream& feed, Equilibrium& state) {
    std::vector<FlashCondition> given;
    if (feed.temperature)
        given.push_back({FlashVariable::temperature, *feed.temperature});
    if (feed.pressure)
        given.push_back({FlashVariable::pressure, *feed.pressure});
    if (feed.vaporFraction)
        given.push_back({FlashVariable::vaporFraction, *feed.vaporFraction});
    std::string error;
    return package.flash(feed.composition, given.at(0), given.at(1), state, error);
}

/// Changes the feed's temperature at its pressure: a compressor or a valve makes sense at that only. Where it
/// has no such state, changes its pressure at its temperature, or both. False if it has none anywhere.
bool bringToSide(const PropertyPackage& package, const Side& side, FeedStream& feed) {
    Equilibrium own, saturated;
    if (!readState(package, feed, own))
        return false;
    for (const FlashCondition& kept :
         {FlashCondition{FlashVariable::pressure, own.pressure},
          FlashCondition{FlashVariable::temperature, own.temperature}, side.farInside}) {
        std::string error;
        if (!package.flash(feed.composition, kept, {FlashVariable::vaporFraction, side.vaporFraction},
                           saturated, error))
            continue;
        const bool keepsPressure = kept.variable == FlashVariable::pressure;
        const FlashCondition temperature{FlashVariable::temperature,
                                         saturated.temperature + (keepsPressure ? side.temperatureStep : 0)};
        const FlashCondition pressure{FlashVariable::pressure,
                                      saturated.pressure * (keepsPressure ? 1 : side.pressureFactor)};
        // The package flashes at lower temperatures, too, with heat capacities that stay the same.
        if (!(keepsPressure || isWithinData(temperature.value)) ||
            !package.flash(feed.composition, temperature, pressure, own, error))
            continue;
        feed.temperature = temperature.value;
        feed.pressure = pressure.value;
        feed.vaporFraction.reset();
        return true;
    }
    return false;
}

/// The feed's compounds that boil first and last, of which a flash at given conditions makes one phase. None
/// for up to two compounds: without one of them the other is alone.
std::vector<const Compound*> extremeCompounds(const std::vector<const Compound*>& compounds,
                                              const FeedStream& feed) {
    std::vector<const Compound*> present;
    for (std::size_t i = 0; i < compounds.size(); ++i)
        if (feed.composition[i] > 0)
            present.push_back(compounds[i]);
    if (present.size() <= 2)
        return {};
    const auto [first, last] = std::ranges::minmax_element(present, {}, &Compound::normalBoilingPoint);
    return {*first, *last};
}

/// Gives the feed this compound only, at its temperature and pressure.
bool makePure(const PropertyPackage& package, const Compound& compound, FeedStream& feed) {
    Equilibrium own;
    if (!readState(package, feed, own))
        return false;
    feed.temperature = own.temperature;
    feed.pressure = own.pressure;
    feed.vaporFraction.reset();
    for (std::size_t i = 0; i < feed.composition.size(); ++i)
        feed.composition[i] = package.compounds()[i] == &compound ? 1 : 0;
    return true;
}

} // namespace

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
    const PropertyPackage package(flowsheet.compounds);
    std::vector<CaseVariation> variations;
    for (std::size_t i = 0; i < flowsheet.compounds.size(); ++i) {
        CaseVariation variation{std::string(flowsheet.compounds[i]->name) + " absent", flowsheet};
        const bool othersRemain = std::ranges::all_of(variation.flowsheet.feeds, [&](FeedStream& feed) {
            feed.composition[i] = 0;
            const double rest = std::reduce(feed.composition.begin(), feed.composition.end());
            for (double& fraction : feed.composition)
                fraction /= rest;
            Equilibrium state;
            return rest > 0 && readState(package, feed, state) && isWithinData(state.temperature);
        });
        if (othersRemain)
            variations.push_back(std::move(variation));
    }
    return variations;
}

std::vector<CaseVariation> inOnePhase(const Case& flowsheet) {
    const PropertyPackage package(flowsheet.compounds);
    std::vector<CaseVariation> variations;
    for (std::size_t i = 0; i < flowsheet.feeds.size(); ++i) {
        const auto add = [&](const std::string& name, auto change) {
            CaseVariation variation{"feed " + flowsheet.feeds[i].name + name, flowsheet};
            const FeedStream& feed = variation.flowsheet.feeds[i];
            if (!change(variation.flowsheet.feeds[i]))
                return;
            variation.name +=
                " (" + shortNumber(*feed.temperature, 4) + " K, " + shortNumber(*feed.pressure, 4) + " Pa)";
            variations.push_back(std::move(variation));
        };
        for (const Side& side : sides)
            add(side.name, [&](FeedStream& feed) { return bringToSide(package, side, feed); });
        for (const Compound* compound : extremeCompounds(flowsheet.compounds, flowsheet.feeds[i]))
            add(" of " + std::string(compound->name) + " alone",
                [&](FeedStream& feed) { return makePure(package, *compound, feed); });
    }
    return variations;
}

std::vector<FeedInput> feedInputs(const Case& flowsheet) {
    struct Row {
        const char* name;
        const char* unit;
        std::optional<double> FeedStream::* condition;
    };
    constexpr std::array rows{Row{"temperature", " K", &FeedStream::temperature},
                              Row{"pressure", " Pa", &FeedStream::pressure},
                              Row{"vapour fraction", "", &FeedStream::vaporFraction}};
    std::vector<FeedInput> inputs;
    for (std::size_t i = 0; i < flowsheet.feeds.size(); ++i) {
        const FeedStream& feed = flowsheet.feeds[i];
        if (feed.flow > 0)
            inputs.push_back({"flow of feed " + feed.name, " mol/s", i, &FeedStream::flow, nullptr});
        for (const Row& row : rows) {
            const std::optional<double>& value = feed.*row.condition;
            const bool isLimit = row.condition == &FeedStream::vaporFraction && value == 1.0;
            if (value && *value > 0 && !isLimit)
                inputs.push_back(
                    {std::string(row.name) + " of feed " + feed.name, row.unit, i, nullptr, row.condition});
        }
    }
    return inputs;
}

double valueOf(const Case& flowsheet, const FeedInput& input) {
    const FeedStream& feed = flowsheet.feeds[input.feed];
    return input.flow ? feed.*input.flow : *(feed.*input.condition);
}

Case withChange(const Case& flowsheet, const FeedInput& input, double part) {
    Case changed = flowsheet;
    FeedStream& feed = changed.feeds[input.feed];
    (input.flow ? feed.*input.flow : *(feed.*input.condition)) *= 1 + part;
    return changed;
}

} // namespace solvane::host
