/// The results of a run as a list of named outputs, and how two lists differ.
#pragma once

#include "results/RunResults.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// A quantity of a product or an output parameter.
struct Output {
    std::string name; ///< such as "temperature of stream Vapor"
    double value = 0; ///< SI units; NaN for a text
    double scale = 0; ///< what a deviation is compared with, in the same units
    std::string text; ///< of a value that is not a number; otherwise empty
};

/// The temperatures, pressures, enthalpies, vapour fractions and flows by compound of all units' products,
/// and all output parameters, of a run that succeeded. A duty is small only against the energy that the
/// streams carry, a flow of a compound against that of all: scales are taken from the streams of the run.
std::vector<Output> outputsOf(const RunResults& results);

struct Deviation {
    std::string output;
    double size = 0;  ///< in parts of the output's scale; infinite where only one run has a value
    std::string text; ///< both values
};

/// The largest deviation of `actual` from `expected` above `tolerance`, output by output of the same name.
/// Two values that are both no numbers do not deviate.
std::optional<Deviation> largestDeviation(const std::vector<Output>& expected,
                                          const std::vector<Output>& actual, double tolerance);

/// Which number is infinite or none, the first one, with its value; empty if all are finite.
std::string unsoundOutput(const std::vector<Output>& outputs);

} // namespace solvane::host
