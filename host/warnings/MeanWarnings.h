/// Products that are set at a wrong mean of the feeds.
#pragma once

#include "UnitReview.h"

#include <vector>

namespace solvane::host {

/// The products whose enthalpy or temperature shows how the script adds up the feeds, if the enthalpies do
/// not balance. The unit keeps the mass.
std::vector<Warning> wrongMeans(const UnitReview& review);

} // namespace solvane::host
