/// The search for the value of a variable that gives a result of a case a target.
#pragma once

#include "Axis.h"
#include "StudyColumn.h"
#include "Variation.h"
#include "results/RunResults.h"

#include <functional>
#include <string>

namespace solvane::host {

/// What the user asks for.
struct AdjustmentRequest {
    std::string
        variable{}; ///< "outlet pressure=2 bar:20 bar": a variable of a study and the ends of its bracket
    std::string target{}; ///< "shaft power=600 kW": a column of a study's table
    double tolerance =
        1e-6;        ///< of the output, in parts of the target; of the larger end's output if that is 0
    int limit = 100; ///< of the trials
};

/// The same, read.
struct Adjustment {
    Axis axis{};
    Range bracket{};
    StudyColumn output{};
    AdjustmentResult plan{}; ///< without a trial
};

/// Reads a request and checks that both ends can be. False with a text that names the option.
[[nodiscard]] bool readAdjustment(const Case& flowsheet, const UnitParameters& parameters,
                                  const AdjustmentRequest& request, Adjustment& adjustment,
                                  std::string& error);

/// Calculates the case with other values.
using Calculation = std::function<bool(const Variation& variation, RunResults& results, std::string& error)>;

/// Receives the trials up to the last one, which has just ended.
using TrialSink = std::function<void(const AdjustmentResult&)>;

/// Calculates the case at the ends of the bracket and then inside it until the output has its target.
/// `results` are those of the last trial. False with a text that says why the target is not reached, after a
/// failed calculation with the unit's text.
[[nodiscard]] bool reachTarget(const Case& flowsheet, const Adjustment& adjustment,
                               const Calculation& calculate, const TrialSink& onTrial, RunResults& results,
                               std::string& error);

} // namespace solvane::host
