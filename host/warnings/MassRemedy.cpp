#include "MassRemedy.h"

#include "cases/NumberText.h"
#include "results/Balances.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>
#include <vector>

namespace solvane::host {

namespace {

using Streams = std::span<const StreamResult* const>;
/// mol/s of each compound.
using Moles = std::vector<double>;

/// By which part of the feeds' flow scripts round.
constexpr double roundedPart = 1e-6;
/// Of molar masses with three digits.
constexpr double molarMassPart = 1e-3;

double sum(const Moles& moles) {
    return std::reduce(moles.begin(), moles.end());
}

std::string rate(double moles) {
    return shortNumber(moles, 4) + " mol/s";
}

/// An open balance of the compounds.
struct OpenBalance {
    const UnitReview& review;
    Moles in, out;

    explicit OpenBalance(const UnitReview& unit)
        : review(unit), in(molesOf(unit.feeds)), out(molesOf(unit.products)) {}

    Moles molesOf(Streams streams) const {
        Moles moles(review.compounds.size());
        for (const StreamResult* stream : streams)
            for (std::size_t i = 0; i < moles.size(); ++i)
                moles[i] += stream->totalFlow * stream->fraction[i];
        return moles;
    }

    bool isZero(double moles) const { return std::abs(moles) <= roundedPart * sum(in); }

    /// Whether the left side is `factor` times the right one.
    bool isEqual(const Moles& left, const Moles& right, double factor = 1) const {
        return std::ranges::equal(left, right,
                                  [&](double one, double other) { return isZero(one - factor * other); });
    }

    /// What the other products leave of the feeds.
    Moles remainder(const StreamResult& product) const {
        Moles moles = molesOf(std::array{&product});
        for (std::size_t i = 0; i < moles.size(); ++i)
            moles[i] += in[i] - out[i];
        return moles;
    }

    /// As "ethane: 2 mol/s in, 1 mol/s out".
    std::string largestDifference() const {
        std::size_t largest = 0;
        for (std::size_t i = 0; i < in.size(); ++i)
            if (std::abs(in[i] - out[i]) > std::abs(in[largest] - out[largest]))
                largest = i;
        return std::string(review.compounds[largest]->name) + ": " + rate(in[largest]) + " in, " +
               rate(out[largest]) + " out";
    }
};

// Each rule names a cause, if the flows prove it.

std::string noFlow(const OpenBalance& open) {
    const auto hasFlow = [](const StreamResult* product) { return product->totalFlow != 0; };
    return std::ranges::any_of(open.review.products, hasFlow)
               ? ""
               : "no product has flow, although the feeds have: look at the branch for no flow";
}

/// How many mol/s one of another unit is.
struct FlowUnit {
    const char* name;
    double molesPerSecond;
    bool isMass = false; ///< kg/s in place of mol/s
};

constexpr std::array flowUnits{
    FlowUnit{"kmol/h", 1000.0 / 3600},  FlowUnit{"mol/h", 1.0 / 3600},
    FlowUnit{"kmol/s", 1000},           FlowUnit{"kg/s", 1, true},
    FlowUnit{"kg/h", 1.0 / 3600, true}, FlowUnit{"t/h", 1000.0 / 3600, true},
};

/// A product, or all together, whose flow is off by the factor of a unit of flows.
std::string otherUnit(const OpenBalance& open) {
    const Balance& balance = open.review.balance;
    const auto unitOf = [&](double massFlow, double totalFlow) -> const char* {
        const double meant = massFlow - (balance.mass.out - balance.mass.in); // kg/s
        for (const FlowUnit& unit : flowUnits)
            if (const double read = unit.molesPerSecond * (unit.isMass ? totalFlow / massFlow : 1);
                std::abs(meant / massFlow / read - 1) < molarMassPart)
                return unit.name;
        return nullptr;
    };
    for (const StreamResult* product : open.review.products)
        if (const char* unit = unitOf(product->massFlow, product->totalFlow))
            return "the flow of stream " + product->name + " looks like one in " + unit +
                   ": flows are in mol/s";
    if (const char* unit = unitOf(balance.mass.out, balance.moles.out))
        return std::string("the flows of the products look like ones in ") + unit + ": flows are in mol/s";
    return "";
}

std::vector<const StreamResult*> flowingFeeds(const OpenBalance& open) {
    std::vector<const StreamResult*> flowing;
    std::ranges::copy_if(open.review.feeds, std::back_inserter(flowing),
                         [](const StreamResult* feed) { return feed->totalFlow > 0; });
    return flowing;
}

std::string loneFeed(const OpenBalance& open) {
    const std::vector<const StreamResult*> flowing = flowingFeeds(open);
    for (const StreamResult* feed : flowing)
        if (flowing.size() > 1 && open.isEqual(open.molesOf(std::array{feed}), open.out)) {
            const StreamResult* other = flowing.front() == feed ? flowing.back() : flowing.front();
            return "what comes out is feed " + feed->name + " alone: " +
                   (flowing.size() == 2 ? "feed " + other->name + " has" : "the other feeds have") +
                   " no effect";
        }
    return "";
}

std::string meanComposition(const OpenBalance& open) {
    Moles fractions(open.in.size());
    for (const StreamResult* feed : flowingFeeds(open))
        for (std::size_t i = 0; i < fractions.size(); ++i)
            fractions[i] += feed->fraction[i];
    return open.isEqual(open.out, fractions, sum(open.in) / sum(fractions))
               ? "the products have the mean of the feeds' compositions, not weighted by their flows: add up "
                 "their flows of each compound"
               : "";
}

std::string oneFactor(const OpenBalance& open) {
    const double factor = sum(open.out) / sum(open.in);
    return open.isEqual(open.out, open.in, factor) ? "each compound comes out " + shortNumber(factor, 4) +
                                                         " times: look at the flows of the products"
                                                   : "";
}

std::string scaledFeed(const OpenBalance& open) {
    for (const StreamResult* feed : open.review.feeds) {
        const Moles own = open.molesOf(std::array{feed});
        Moles seen = own;
        for (std::size_t i = 0; i < seen.size(); ++i)
            seen[i] += open.out[i] - open.in[i];
        const double factor = sum(seen) / sum(own);
        const bool isMixture = std::ranges::count_if(own, [&](double one) { return !open.isZero(one); }) > 1;
        if (!isMixture || !open.isEqual(seen, own, factor))
            continue;
        if (open.isZero(sum(seen)))
            return "feed " + feed->name + " has no effect on what comes out";
        const auto other = std::ranges::find_if(open.review.feeds, [&](const StreamResult* one) {
            return one != feed && open.isZero(one->totalFlow - sum(seen));
        });
        return "feed " + feed->name + " comes out " + shortNumber(factor, 4) + " times" +
               (other == open.review.feeds.end() ? "" : ", as if it had the flow of feed " + (*other)->name) +
               ": look at how the feeds are added";
    }
    return "";
}

std::string otherOrder(const OpenBalance& open) {
    Moles in = open.in, out = open.out;
    std::ranges::sort(in);
    std::ranges::sort(out);
    if (!open.isEqual(in, out))
        return "";
    return "the compounds come out in another order: " + open.largestDifference();
}

std::string compositionOfFeed(const OpenBalance& open) {
    for (const StreamResult* product : open.review.products)
        for (const StreamResult* feed : open.review.feeds)
            if (!open.isZero(product->totalFlow) && product->fraction == feed->fraction &&
                open.isEqual(open.remainder(*product), open.in, product->totalFlow / sum(open.in)))
                return "stream " + product->name + " has the composition of feed " + feed->name +
                       ": the balance closes with that of all feeds";
    return "";
}

std::string oneFlow(const OpenBalance& open) {
    for (const StreamResult* product : open.review.products)
        if (const auto flow = closingFlow(open.review, *product))
            return "the balance closes with " + rate(*flow) + " of stream " + product->name + ", not " +
                   rate(product->totalFlow);
    return "";
}

std::string oneCompound(const OpenBalance& open) {
    std::size_t closed = 0;
    for (std::size_t i = 0; i < open.in.size(); ++i)
        closed += open.isZero(open.in[i] - open.out[i]);
    return closed + 1 == open.in.size() ? "all compounds but one close: " + open.largestDifference() : "";
}

std::string someElements(const OpenBalance& open) {
    const std::string elements = openElements(open.review.balance);
    return elements.empty() ? ""
                            : "the balance is open in " + elements +
                                  " only: compare the script's balance with its equations";
}

constexpr std::array rules{noFlow,     otherUnit,         loneFeed, meanComposition, oneFactor,   scaledFeed,
                           otherOrder, compositionOfFeed, oneFlow,  oneCompound,     someElements};

} // namespace

std::string massRemedy(const UnitReview& review) {
    const OpenBalance open(review);
    for (const auto rule : rules)
        if (std::string cause = rule(open); !cause.empty())
            return cause;
    return "the largest difference is that of " + open.largestDifference();
}

std::string openElements(const Balance& balance) {
    std::string open;
    bool isOneKept = false;
    for (const ElementFlow& element : balance.elements)
        if (!isKept(element.moles))
            open += (open.empty() ? "" : ", ") + element.symbol;
        else if (element.moles.in != 0)
            isOneKept = true;
    return isOneKept ? open : "";
}

std::optional<double> closingFlow(const UnitReview& review, const StreamResult& product) {
    const OpenBalance open(review);
    const Moles remainder = open.remainder(product);
    const double flow = sum(remainder);
    const auto isPresent = [&](double fraction) { return fraction > 0; };
    return flow > 0 && std::ranges::count_if(product.fraction, isPresent) > 1 &&
                   open.isEqual(remainder, product.fraction, flow)
               ? std::optional(flow)
               : std::nullopt;
}

} // namespace solvane::host
