#pragma once

#include "StudyRows.h"

#include <string>

namespace solvane::host {

/// "[#####.....] 50 of 100 points, 2 failed, 4.1 per second, 13 s left".
std::string progressText(const StudyProgress& progress, double seconds);

} // namespace solvane::host
