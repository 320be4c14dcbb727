/// The user's model file, which a save replaces completely or not at all.
#pragma once

#include <string>

namespace solvane {

class Unit;

/// Saves the model to `path` (ANSI). Writes the container beside it first and then replaces the file: a
/// failure leaves the existing file.
[[nodiscard]] bool saveModelFile(Unit& unit, const std::string& path, std::string& error);

} // namespace solvane
