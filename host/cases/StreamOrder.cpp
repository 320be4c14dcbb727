#include "CaseParts.h"

#include <algorithm>

namespace solvane::host {

namespace {

using Units = std::vector<UnitCase>;

Units::const_iterator makerOf(const Units& units, const std::string& stream) {
    return std::ranges::find_if(units, [&](const UnitCase& unit) {
        return std::ranges::find(unit.products, stream, &PortConnection::stream) != unit.products.end();
    });
}

Units::const_iterator takerOf(const Units& units, const std::string& stream) {
    return std::ranges::find_if(units, [&](const UnitCase& unit) {
        return std::ranges::find(unit.feeds, stream, &PortConnection::stream) != unit.feeds.end();
    });
}

/// Whether streams lead from one unit to the other, or they are the same.
bool isDownstream(const Units& units, Units::const_iterator from, Units::const_iterator to) {
    std::vector<Units::const_iterator> reached{from};
    for (std::size_t i = 0; i < reached.size(); ++i)
        for (const PortConnection& product : reached[i]->products) {
            const auto next = takerOf(units, product.stream);
            if (next != units.end() && std::ranges::find(reached, next) == reached.end())
                reached.push_back(next);
        }
    return std::ranges::find(reached, to) != reached.end();
}

/// Why a unit cannot have a feed that nothing before it makes.
std::string faultOf(const Units& units, const UnitCase& unit, const std::string& stream) {
    const std::string subject = "the stream \"" + stream + "\" ";
    const auto maker = makerOf(units, stream);
    if (maker == units.end())
        return subject + "is neither given in \"streams\" nor a product of a unit";
    if (isDownstream(units, takerOf(units, stream), maker))
        return subject + "closes a recycle: \"" + maker->name + "\" makes it from what \"" + unit.name +
               "\" makes; add \"tear\": [\"" + stream + "\"] to the case";
    return subject + "comes from \"" + maker->name + "\"; list this unit before \"" + unit.name + "\"";
}

bool isTear(const Case& flowsheet, const std::string& stream) {
    return std::ranges::find(flowsheet.tears, stream, &FeedStream::name) != flowsheet.tears.end();
}

/// Whether each tear stream feeds a unit up to the one that makes it.
bool checkTears(const CasePlace& tears, const Case& flowsheet) {
    for (std::size_t i = 0; i < flowsheet.tears.size(); ++i) {
        const std::string& stream = flowsheet.tears[i].name;
        const auto maker = makerOf(flowsheet.units, stream);
        if (maker == flowsheet.units.end())
            return tears.element(i).fail("no unit makes the stream \"" + stream + "\"");
        if (maker < takerOf(flowsheet.units, stream))
            return tears.element(i).fail("the stream \"" + stream + "\" closes no recycle: \"" + maker->name +
                                         "\" makes it before it feeds a unit; remove it from the list");
    }
    return true;
}

} // namespace

bool checkStreams(const CasePlace& root, const Case& flowsheet) {
    std::vector<std::string> names; // of the streams made so far
    for (const FeedStream& feed : flowsheet.feeds)
        names.push_back(feed.name);
    std::vector<std::string> unused = names;
    for (const FeedStream& tear : flowsheet.tears)
        unused.push_back(tear.name);
    const auto take = [&](const CasePlace& place, const UnitCase& unit, const std::string& stream) {
        if (std::erase(unused, stream) > 0)
            return true;
        const bool isKnown = isTear(flowsheet, stream) || std::ranges::find(names, stream) != names.end();
        return place.fail(isKnown
                              ? "the stream \"" + stream +
                                    "\" already feeds another port; for two of it, let a splitter make them"
                              : faultOf(flowsheet.units, unit, stream));
    };
    for (std::size_t i = 0; i < flowsheet.units.size(); ++i) {
        const UnitCase& unit = flowsheet.units[i];
        const CasePlace place = root.member("units").element(i);
        for (const auto& [port, stream] : unit.feeds)
            if (!take(place.member("feeds").member(port), unit, stream))
                return false;
        for (const auto& [port, stream] : unit.products) {
            if (!isNewName(place.member("products").member(port), stream, names))
                return false;
            if (!isTear(flowsheet, stream))
                unused.push_back(stream);
        }
    }
    return flowsheet.tears.empty() || checkTears(root.member("tear"), flowsheet);
}

} // namespace solvane::host
