/// Variations of a case, on which a model must still work.
#pragma once

#include "cases/CaseModel.h"

#include <optional>
#include <string>
#include <vector>

namespace solvane::host {

struct CaseVariation {
    std::string name; ///< what is varied, such as "feed Suction without flow"
    Case flowsheet;
};

/// Each feed without flow, then all of them.
std::vector<CaseVariation> withoutFlow(const Case& flowsheet);

/// The compounds in the reversed order.
Case withReversedCompounds(const Case& flowsheet);

/// Each compound absent from all feeds, if others remain in each, whose state the package has data for.
std::vector<CaseVariation> withoutCompound(const Case& flowsheet);

/// Each feed as a liquid 5 K below its bubble point and as a vapour 5 K above its dew point, at its pressure;
/// where there is no such point, at its temperature or far from both, within the temperatures for which the
/// package has heat capacities; without the states that exist nowhere. Then each feed of more than two
/// compounds as that which boils first and as that which boils last, at its temperature and pressure.
std::vector<CaseVariation> inOnePhase(const Case& flowsheet);

/// An input of a feed that can be changed by a small part of itself.
struct FeedInput {
    std::string name; ///< such as "temperature of feed Suction"
    const char* unit = "";
    std::size_t feed = 0;
    double FeedStream::* flow = nullptr;                     ///< either this
    std::optional<double> FeedStream::* condition = nullptr; ///< or this
};

/// The inputs of all feeds that are stated, not 0, and no limit of their range.
std::vector<FeedInput> feedInputs(const Case& flowsheet);

double valueOf(const Case& flowsheet, const FeedInput& input);

/// The case with the input multiplied by 1 + `part`.
Case withChange(const Case& flowsheet, const FeedInput& input, double part);

} // namespace solvane::host
