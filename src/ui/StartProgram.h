#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// Starts a program in the folder and waits a moment until it is ready for input. Empty if it cannot be
/// started.
Handle startProgram(std::wstring command, const std::wstring& folder, bool inheritsHandles);

} // namespace solvane
