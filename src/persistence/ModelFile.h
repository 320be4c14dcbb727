/// A model file of the user's, which is replaced whole or not at all.
#pragma once

#include <string>

namespace solvane {

class Unit;

/// Saves the model to `path` (ANSI). The container is written beside it and takes its place when it is whole:
/// a failure leaves the file that was there.
[[nodiscard]] bool saveModelFile(Unit& unit, const std::string& path, std::string& error);

} // namespace solvane
