#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// A running program that is ready for its user, as far as that does not take long; empty where it cannot be
/// started. `folder` is its current one.
Handle startProgram(std::wstring command, const std::wstring& folder, bool inheritsHandles);

} // namespace solvane
