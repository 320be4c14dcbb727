/// A case with the values of one point of a study.
#pragma once

#include "Design.h"

#include <string>
#include <vector>

namespace solvane::host {

/// What differs between the points of a study.
struct Variation {
    std::vector<FeedStream> feeds{};
    std::vector<std::vector<ParameterSetting>> parameters{}; ///< by unit
};

/// The case with a point's values. The fractions that a point leaves open keep their ratios and fill the sum
/// to 1; a feed that the case gives as a flow of mass keeps its mass. False with a text that names the
/// point's value that cannot be.
[[nodiscard]] bool vary(const Case& flowsheet, const std::vector<Axis>& axes, const Point& point,
                        Variation& variation, std::string& error);

/// The variation in one line, for a worker.
std::string variationLine(const Variation& variation);

/// Gives a worker's case the values of such a line, which must be of the same case.
void applyLine(const std::string& line, Case& flowsheet);

} // namespace solvane::host
