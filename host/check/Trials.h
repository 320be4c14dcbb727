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
    bool isRefused = false; ///< the script itself called `error`: it states what it cannot do
    std::string message;    ///< why it failed, with the place in the script
    RunResults results;
    std::vector<Output> outputs; ///< of a run that succeeded
};

/// Runs variations of a case, on the same units where it can.
class Trials {
public:
    /// `sources` is the case with models that hold their scripts, to look up the lines that fail. A stop
    /// request makes every run fail from then on.
    Trials(const Case& flowsheet, const Case& sources, RunLog log, RunWatch& watch);

    /// Runs a case that differs in its feeds only.
    Trial run(const Case& variation);
    /// Runs a case that differs otherwise, or again from the start.
    Trial runAnew(const Case& variation) const;

private:
    Trial runOn(Flowsheet& units, const Case& variation) const;

    const Case& sources_;
    RunLog log_;
    RunWatch& watch_;
    Flowsheet units_;
};

} // namespace solvane::host
