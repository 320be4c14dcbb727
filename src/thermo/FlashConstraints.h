/// The two constraints of a flash, as the script names them.
#pragma once

#include "channel/FlashProperties.h"
#include "unit/model/CPort.h"

#include <span>
#include <string>

namespace solvane {

using FlashConstraint = ProductSpecification::Constraint;
using FlashConstraints = std::span<const FlashConstraint, 2>;

FlashProperty codeOf(const FlashConstraint& constraint);

/// Whether both names may constrain a flash. The error text begins with `caller`.
[[nodiscard]] bool areFlashConstraints(FlashConstraints constraints, const std::string& caller,
                                       std::string& error);

} // namespace solvane
