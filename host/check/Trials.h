/// Runs of a case and its variations.
#pragma once

#include "Outputs.h"
#include "flowsheet/Flowsheet.h"

#include <string>
#include <vector>

namespace solvane::host {

/// How a run went.
struct Trial {
    bool succeeded = false;
    bool isRefused = false;    ///< the script itself called `error`: it states what it cannot do
    bool reachedLimit = false; ///< of the time for a run
    std::string message;       ///< why it failed, with the place in the script
    std::string remedy;        ///< what to do, if the failure itself shows it
    RunResults results;
    std::vector<Output> outputs; ///< of a run that succeeded
};

/// What all runs share.
struct TrialConditions {
    const Case& sources; ///< the case with models that hold their scripts, to look up the lines that fail
    RunWatch& watch;
    std::string stopped{}; ///< the message of the run that an interruption ended
};

/// Runs variations of a case, on the same units where it can. Once it is interrupted, every run fails.
class Trials {
public:
    /// The conditions must outlive it.
    Trials(const Case& flowsheet, TrialConditions& conditions);

    /// Runs a case that differs in its feeds only. The name is for the user who waits for it.
    Trial run(const Case& variation, const std::string& name);
    /// Runs a case that differs otherwise, or again from the start.
    Trial runAnew(const Case& variation, const std::string& name) const;

private:
    Trial runOn(Flowsheet& units, const Case& variation, const std::string& name) const;

    TrialConditions& conditions_;
    Flowsheet units_;
};

} // namespace solvane::host
