#include "CaseParts.h"
#include "NameList.h"

#include <algorithm>

namespace solvane::host {

namespace {

/// Reads a tear stream: its first guess, or its name alone.
bool readTear(const CasePlace& place, const Case& flowsheet, FeedStream& tear) {
    if (!place.value().is_string())
        return readFeed(place, flowsheet.compounds, tear);
    if (flowsheet.feeds.empty())
        return place.fail("without a feed to start from, a tear stream needs a first guess: an object as in "
                          "\"streams\"");
    tear = flowsheet.feeds.front();
    tear.flow = 0;
    return read(place, tear.name);
}

bool readMethod(const CasePlace& place, FixedPointMethod& result) {
    std::string name;
    if (!read(place, name))
        return false;
    const auto found = std::ranges::find(fixedPointMethods, name, &FixedPointMethodName::name);
    if (found == fixedPointMethods.end())
        return place.fail("the method \"" + name + "\" is unknown; methods: " +
                          nameList(fixedPointMethods, &FixedPointMethodName::name));
    result = found->method;
    return true;
}

bool readConvergence(const CasePlace& place, Convergence& result) {
    if (!place.isObject({"method", "tolerance", "limit"}) || !place.optional("tolerance", result.tolerance) ||
        !place.optional("limit", result.limit))
        return false;
    if (place.value().contains("method") && !readMethod(place.member("method"), result.method))
        return false;
    if (!(result.tolerance > 0 && result.tolerance < 1))
        return place.member("tolerance").fail("expected a number between 0 and 1");
    return result.limit > 0 || place.member("limit").fail("expected at least one iteration");
}

} // namespace

bool readRecycles(const CasePlace& root, Case& result) {
    if (!root.value().contains("tear"))
        return !root.value().contains("convergence") ||
               root.member("convergence").fail("it is for recycles; list their streams under \"tear\"");
    const CasePlace tears = root.member("tear");
    if (!tears.value().is_array())
        return tears.fail("expected a list of streams");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < tears.value().size(); ++i) {
        const CasePlace place = tears.element(i);
        if (!readTear(place, result, result.tears.emplace_back()) ||
            !isNewName(place, result.tears.back().name, names))
            return false;
    }
    return !root.value().contains("convergence") ||
           readConvergence(root.member("convergence"), result.convergence);
}

} // namespace solvane::host
