/// What a run of the script has from CapeOpenUnitMex(1,unit_ID) to CapeOpenUnitMex(2).
#pragma once

#include "MexFunctions.h"
#include "Transport.h"

#include <cstddef>
#include <memory>
#include <string>

namespace solvane::gateway {

struct Run {
    std::unique_ptr<Transport> transport;
    std::size_t compoundCount = 0;
    /// 0 with materials of version 1.0, which have no list of phases.
    std::size_t phaseCount = 0;
    /// The most bytes that a request may have.
    std::size_t blockSize = 0;
};

/// Reaches the unit. Null with an error text.
std::unique_ptr<Run> openRun(const std::string& unitId, std::string& error);

/// The run script's cell array of phase names; null if it isn't there.
const mxArray* phaseNames();

} // namespace solvane::gateway
