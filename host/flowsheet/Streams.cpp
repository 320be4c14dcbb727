#include "Streams.h"

#include "com/Text.h"

#include <algorithm>
#include <array>

namespace solvane::host {

namespace {

/// A condition that can specify a feed.
struct FeedCondition {
    std::optional<double> FeedStream::* value;
    FlashSpecification specification;
};

bool flashFeed(const FeedStream& feed, StreamState& state, Failure& failure) {
    const std::array conditions{
        FeedCondition{&FeedStream::temperature, {&temperatureProperty, Place::overall}},
        FeedCondition{&FeedStream::pressure, {&pressureProperty, Place::overall}},
        FeedCondition{&FeedStream::vaporFraction, {&phaseFractionProperty, Place::vapor}},
    };
    if (!state.set(Place::overall, totalFlowProperty, std::span(&feed.flow, 1), failure) ||
        !state.set(Place::overall, fractionProperty, feed.composition, failure))
        return false;
    std::vector<FlashSpecification> given;
    for (const FeedCondition& condition : conditions) {
        const auto& value = feed.*condition.value;
        if (!value)
            continue;
        const auto& [property, place] = condition.specification;
        if (!state.set(place, *property, std::span(&*value, 1), failure))
            return false;
        given.push_back(condition.specification);
    }
    return state.flash(given.at(0), given.at(1), failure);
}

bool readScalar(const StreamState& state, Place place, const StreamProperty& property, double& result,
                Failure& failure) {
    std::vector<double> values;
    if (!state.get(place, property, values, failure))
        return false;
    result = values.front();
    return true;
}

/// Reads the present phases, where the stream has more than one.
bool readPhases(const StreamState& state, StreamResult& result, Failure& failure) {
    if (!std::ranges::all_of(phasePlaces, [&](Place phase) { return state.isPresent(phase); }))
        return true;
    for (const Place phase : phasePlaces) {
        PhaseResult& one = result.phases.emplace_back();
        one.label = narrow(placeLabel(phase), CP_UTF8);
        if (!readScalar(state, phase, phaseFractionProperty, one.amount, failure) ||
            !state.get(phase, fractionProperty, one.fraction, failure))
            return false;
    }
    return true;
}

} // namespace

bool makeStreams(const Case& flowsheet, std::shared_ptr<const MaterialHabits> habits,
                 std::vector<Stream>& streams, std::string& error) {
    const auto package = std::make_shared<const PropertyPackage>(flowsheet.compounds);
    const auto add = [&](const std::string& name) -> StreamState& {
        auto state = std::make_shared<StreamState>(package, habits);
        streams.push_back({name, state, createMaterial(flowsheet.generation, state, widen(name, CP_UTF8))});
        return *state;
    };
    const auto addFlashed = [&](const char* kind, const FeedStream& feed) {
        Failure failure;
        if (flashFeed(feed, add(feed.name), failure))
            return true;
        error = kind + (" \"" + feed.name) + "\": " + narrow(failure.text, CP_UTF8);
        return false;
    };
    for (const FeedStream& feed : flowsheet.feeds)
        if (!addFlashed("Feed", feed))
            return false;
    for (const FeedStream& tear : flowsheet.tears)
        if (!addFlashed("Tear stream", tear))
            return false;
    for (const UnitCase& unit : flowsheet.units)
        for (const PortConnection& product : unit.products)
            if (std::ranges::find(streams, product.stream, &Stream::name) == streams.end())
                add(product.stream);
    return true;
}

std::vector<Connection> connectionsOf(const UnitCase& unit, const std::vector<Stream>& streams) {
    std::vector<Connection> connections;
    for (const auto* ports : {&unit.feeds, &unit.products})
        for (const PortConnection& one : *ports)
            connections.push_back(
                {one.port, std::ranges::find(streams, one.stream, &Stream::name)->material});
    return connections;
}

bool readStream(const Stream& stream, StreamResult& result, std::string& error) {
    StreamState state = *stream.state; // a copy: calculations must not change the stream
    Failure failure;
    result.name = stream.name;
    if (!readScalar(state, Place::overall, temperatureProperty, result.temperature, failure) ||
        !readScalar(state, Place::overall, pressureProperty, result.pressure, failure) ||
        !readScalar(state, Place::overall, totalFlowProperty, result.totalFlow, failure) ||
        !state.get(Place::overall, fractionProperty, result.fraction, failure) ||
        !state.calculate(Place::overall, enthalpyProperty, failure) ||
        !readScalar(state, Place::overall, enthalpyProperty, result.enthalpy, failure) ||
        !state.calculate(Place::overall, enthalpyFProperty, failure) ||
        !readScalar(state, Place::overall, enthalpyFProperty, result.enthalpyF, failure) ||
        !state.calculate(Place::overall, entropyProperty, failure) ||
        !readScalar(state, Place::overall, entropyProperty, result.entropy, failure) ||
        (state.isPresent(Place::vapor) &&
         !readScalar(state, Place::vapor, phaseFractionProperty, result.vaporFraction, failure)) ||
        !readPhases(state, result, failure)) {
        error = "Stream \"" + stream.name + "\": " + narrow(failure.text, CP_UTF8);
        return false;
    }
    result.massFlow = result.totalFlow * molarMass(state.package()->compounds(), result.fraction);
    return true;
}

} // namespace solvane::host
