/// What a script leaves behind in Matlab: open files, another current folder, figures, memory.
#pragma once

#include "CheckOutcome.h"
#include "cases/CaseModel.h"

#include <optional>
#include <string>
#include <vector>

namespace solvane::host {

/// The model with its script inside another one, which prints at its end what is left open.
UnitModel withProbe(const UnitModel& model);

struct Leftovers {
    int files = 0;            ///< open ones
    int figures = 0;          ///< open windows
    bool movedFolder = false; ///< the script ended in another current folder
    double memory = 0;        ///< of Matlab's process, bytes; 0 if it is not known
};

/// Reads what the probe printed into the report on Matlab's output; nothing if it did not come to that.
std::optional<Leftovers> readLeftovers(const std::string& output);

/// What stays after a unit's runs, given in their order.
std::vector<CheckFinding> findLeftovers(const std::vector<Leftovers>& runs);

} // namespace solvane::host
