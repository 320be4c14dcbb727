/// The calls that one operation makes on a material, and what it says when one of them goes wrong.
#pragma once

#include "CallRecord.h"

#include <functional>
#include <string>
#include <vector>

namespace solvane {

/// What an operation came to: its error, empty on success, and the calls that the material received.
struct Outcome {
    std::string error;
    std::vector<std::string> calls;
    std::string errorOfNext = {}; ///< the same operation once more, undisturbed, in the same run
};

/// Carries the operation out on a fresh material, once `sabotage` has seen to that material's record.
using Scenario = std::function<Outcome(const std::function<void(CallRecord&)>& sabotage)>;

struct Step {
    std::string call;    ///< with all its arguments
    std::string failure; ///< the words before the material's own
};

/// The operation succeeds with just these calls, in this order; where one of them fails, it ends there with
/// that call's words and the material's reason, and the next one succeeds.
void expectRoad(const std::vector<Step>& steps, const Scenario& scenario);

struct OddAnswer {
    std::string call; ///< how the call begins
    Variant value;    ///< what the material gives in its place, with S_OK
    std::string failure;
    std::size_t output = 0;
};

void expectOddAnswers(const std::vector<OddAnswer>& answers, const Scenario& scenario);

/// Gives all that is no list of that type in answer to the call; each must fail with `failure` and what the
/// list should have been.
void expectOddLists(const std::string& call, VARTYPE elementType, const std::string& failure,
                    const Scenario& scenario, std::size_t output = 0);

} // namespace solvane
