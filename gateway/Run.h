/// What a run of the script has from CapeOpenUnitMex(1,unit_ID) to CapeOpenUnitMex(2).
#pragma once

#include "Transport.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace solvane::gateway {

struct Run {
    std::unique_ptr<Transport> transport;
    std::size_t compoundCount = 0;
    /// In the code page; none with materials of version 1.0, which have no list of phases.
    std::vector<std::string> phaseNames;
    /// The most bytes that a request may have.
    std::size_t blockSize = 0;
};

/// Reaches the unit. Null with an error text.
std::unique_ptr<Run> openRun(const std::string& unitId, std::string& error);

} // namespace solvane::gateway
