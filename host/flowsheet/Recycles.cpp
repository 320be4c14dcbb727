#include "Recycles.h"

#include "cases/NumberText.h"
#include "convergence/FixedPoint.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace solvane::host {

namespace {

using Values = std::vector<double>;

// The variables of a tear stream in their order; a flow for each compound follows.
constexpr std::size_t pressureIndex = 0;
constexpr std::size_t enthalpyIndex = 1;
constexpr std::size_t flowIndex = 2;

std::vector<const Stream*> tearStreams(const Case& flowsheet, const std::vector<Stream>& streams) {
    std::vector<const Stream*> tears;
    for (const FeedStream& tear : flowsheet.tears)
        tears.push_back(&*std::ranges::find(streams, tear.name, &Stream::name));
    return tears;
}

bool readTears(std::span<const Stream* const> tears, std::vector<StreamResult>& states, std::string& error) {
    states.clear();
    return std::ranges::all_of(
        tears, [&](const Stream* tear) { return readStream(*tear, states.emplace_back(), error); });
}

Values variablesOf(std::span<const StreamResult> tears) {
    Values values;
    for (const StreamResult& tear : tears) {
        values.push_back(tear.pressure);
        values.push_back(tear.enthalpy);
        for (const double fraction : tear.fraction)
            values.push_back(fraction * tear.totalFlow);
    }
    return values;
}

/// What each variable is measured by: its pressure, R times its temperature, and the largest flow of the
/// feeds and the tear streams.
Values scalesOf(const Case& flowsheet, std::span<const StreamResult> tears) {
    double flow = 0;
    for (const FeedStream& feed : flowsheet.feeds)
        flow = std::max(flow, feed.flow);
    for (const StreamResult& tear : tears)
        flow = std::max(flow, tear.totalFlow);
    Values scales;
    for (const StreamResult& tear : tears) {
        scales.push_back(tear.pressure);
        scales.push_back(gasConstant * tear.temperature);
        scales.insert(scales.end(), tear.fraction.size(), flow > 0 ? flow : 1);
    }
    return scales;
}

Values scaled(const Values& values, const Values& scales) {
    Values result(values.size());
    std::ranges::transform(values, scales, result.begin(), std::divides());
    return result;
}

/// The largest relative difference of a guess and its image; the first one that is not a number counts as
/// such.
IterationResult largestDeviation(const Case& flowsheet, const Values& guess, const Values& image) {
    std::size_t worst = 0;
    double deviation = 0;
    for (std::size_t i = 0; i < guess.size() && !std::isnan(deviation); ++i)
        if (const double one = std::abs(image[i] - guess[i]); !(one <= deviation)) {
            worst = i;
            deviation = one;
        }
    const std::size_t perTear = flowIndex + flowsheet.compounds.size();
    const std::size_t variable = worst % perTear;
    return {deviation, flowsheet.tears[worst / perTear].name,
            variable == pressureIndex ? "pressure"
            : variable == enthalpyIndex
                ? "enthalpy"
                : "flow of " + std::string(flowsheet.compounds[variable - flowIndex]->name)};
}

/// Sets the stream to these variables, with the composition of `image` if nothing flows.
bool setTear(StreamState& state, std::span<const double> values, const StreamResult& image,
             Failure& failure) {
    const std::span<const double> flows = values.subspan(flowIndex);
    const double total = std::reduce(flows.begin(), flows.end());
    Values fractions = image.fraction;
    if (total > 0)
        std::ranges::transform(flows, fractions.begin(), [total](double flow) { return flow / total; });
    return state.set(Place::overall, totalFlowProperty, std::span(&total, 1), failure) &&
           state.set(Place::overall, fractionProperty, fractions, failure) &&
           state.set(Place::overall, pressureProperty, values.subspan(pressureIndex, 1), failure) &&
           state.set(Place::overall, enthalpyProperty, values.subspan(enthalpyIndex, 1), failure) &&
           state.flash({&pressureProperty, Place::overall}, {&enthalpyProperty, Place::overall}, failure);
}

/// Sets the tear streams to the next guess. One that is impossible keeps what the last pass made of it, as
/// does a variable that would become negative.
void setTears(std::span<const Stream* const> tears, const std::vector<StreamResult>& images, Values next) {
    const Values image = variablesOf(images);
    const std::size_t perTear = image.size() / tears.size();
    for (std::size_t i = 0; i < next.size(); ++i)
        if (i % perTear != enthalpyIndex && !(next[i] >= 0))
            next[i] = image[i];
    for (std::size_t i = 0; i < tears.size(); ++i) {
        const StreamState before = *tears[i]->state;
        Failure failure;
        if (!setTear(*tears[i]->state, std::span(next).subspan(i * perTear, perTear), images[i], failure))
            *tears[i]->state = before;
    }
}

std::string notConverged(const ConvergenceResult& result) {
    const IterationResult& last = result.iterations.back();
    return "The recycle does not converge: after " + std::to_string(result.iterations.size()) +
           " iterations the " + last.quantity + " of the stream \"" + last.stream + "\" still changes by " +
           shortNumber(last.deviation, 3) + ", relatively, more than the tolerance of " +
           shortNumber(result.tolerance, 3) +
           ". Check that everything that enters can leave, such as through a purge; otherwise raise "
           "\"limit\", or "
           "try another \"method\" or first guess";
}

} // namespace

bool convergeRecycles(const Case& flowsheet, std::vector<Stream>& streams, const FlowsheetPass& pass,
                      ConvergenceResult& result, std::string& error) {
    const Convergence& settings = flowsheet.convergence;
    result.method =
        std::ranges::find(fixedPointMethods, settings.method, &FixedPointMethodName::method)->name;
    result.tolerance = settings.tolerance;
    result.limit = settings.limit;
    const auto tears = tearStreams(flowsheet, streams);
    FixedPoint search(settings.method);
    std::vector<StreamResult> guesses, images;
    Values scales;
    for (int iteration = 1;; ++iteration) {
        if (!readTears(tears, guesses, error) || !pass(iteration, guesses, error) ||
            !readTears(tears, images, error))
            return false;
        if (scales.empty())
            scales = scalesOf(flowsheet, images);
        const Values guess = scaled(variablesOf(guesses), scales);
        const Values image = scaled(variablesOf(images), scales);
        result.iterations.push_back(largestDeviation(flowsheet, guess, image));
        result.converged = result.iterations.back().deviation <= settings.tolerance;
        if (result.converged)
            return true;
        if (iteration == settings.limit) {
            error = notConverged(result);
            return false;
        }
        Values next = search.next(guess, image);
        std::ranges::transform(next, scales, next.begin(), std::multiplies());
        setTears(tears, images, next);
    }
}

} // namespace solvane::host
