/// The points of a study.
#pragma once

#include "Axis.h"

#include <cstdint>
#include <string>
#include <vector>

namespace solvane::host {

/// A value for each axis, in its unit.
using Point = std::vector<std::string>;

struct Design {
    std::vector<Axis> axes{};
    std::vector<Point> points{};
};

enum class Arrangement { grid, zip, random, latin };

/// How points are made of what the user gives each axis.
struct DesignRequest {
    std::vector<std::string> axes{}; ///< "variable=levels"
    Arrangement arrangement = Arrangement::grid;
    std::size_t count = 0;  ///< of random points
    std::uint64_t seed = 1; ///< the same seed gives the same points on every machine
};

/// Grid: all combinations, the last axis fastest. Zip: the first of each axis, the second of each, and so on.
/// Random and Latin: points in ranges; a Latin one has a point in each of `count` equal parts of each range.
/// False with a text that names the axis.
[[nodiscard]] bool makeDesign(const std::vector<Variable>& variables, const DesignRequest& request,
                              Design& design, std::string& error);

/// Reads a design from the text of a CSV file: a heading such as "Suction.flow (kmol/h)" for each axis, and a
/// line for each point.
[[nodiscard]] bool readDesign(const std::vector<Variable>& variables, const std::string& csv, Design& design,
                              std::string& error);

} // namespace solvane::host
