/// The calls that one operation makes on a material, and its error text for each call that fails.
#pragma once

#include "CallRecord.h"

#include <functional>
#include <string>
#include <vector>

namespace solvane {

/// The result of an operation: its error, empty on success, and the calls that the material received.
struct Outcome {
    std::string error;
    std::vector<std::string> calls;
    std::string errorOfNext = {}; ///< the same operation once more, undisturbed, in the same run
};

/// Carries out the operation on a fresh material, after `sabotage` has changed that material's record.
using Scenario = std::function<Outcome(const std::function<void(CallRecord&)>& sabotage)>;

struct Step {
    std::string call;    ///< with all its arguments
    std::string failure; ///< the words before the material's own
};

/// Expects the operation to succeed with exactly these calls, in this order. If one of them fails, it must
/// end there with that call's words and the material's reason, and the next operation must succeed.
void expectRoad(const std::vector<Step>& steps, const Scenario& scenario);

struct OddAnswer {
    std::string call; ///< how the call begins
    Variant value;    ///< the material's answer, with S_OK
    std::string failure;
    std::size_t output = 0;
};

void expectOddAnswers(const std::vector<OddAnswer>& answers, const Scenario& scenario);

/// Answers the call with values that are not a list of that type; each must fail with `failure` and the
/// expected type.
void expectOddLists(const std::string& call, VARTYPE elementType, const std::string& failure,
                    const Scenario& scenario, std::size_t output = 0);

} // namespace solvane
