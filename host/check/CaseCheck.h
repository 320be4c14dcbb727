/// Whether a model is fit for a flowsheet: what a simulator asks of a unit beyond one good run.
#pragma once

#include "CheckOutcome.h"
#include "Trials.h"

#include <functional>
#include <string>
#include <vector>

namespace solvane::host {

/// What the checks share.
struct CheckedCase {
    const Case& flowsheet;
    TrialConditions& conditions;
    Trials trials;
    Trial base; ///< of the unchanged case
};

/// Looks at the case, check by check: `begin` gets the name of each, `end` its outcome. A case that fails is
/// looked at no further, nor is any after an interruption, whose outcome is none; one that does not repeat
/// its outputs is not compared with its variations.
void checkCase(CheckedCase& checked, const std::function<void(const char* name)>& begin,
               const std::function<void(const char* name, const CheckOutcome&)>& end);

/// Replaces saved models by what the unit reads in them. False with the unit's text.
bool openModels(Case& flowsheet, std::string& error);

} // namespace solvane::host
