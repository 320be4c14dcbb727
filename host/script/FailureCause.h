/// What in a script's text explains its failure, where the message does not say it.
#pragma once

#include "cases/CaseModel.h"

#include <string>

namespace solvane::host {

/// Where a script failed, and with what message. The file is empty if the place is not known.
struct ScriptFailure {
    std::string message;
    std::string file{};
    long line = 0;
};

/// Empty if the text does not explain it.
std::string failureCause(const UnitModel& model, const ScriptFailure& failure);

} // namespace solvane::host
