#pragma once

#include "CasePlace.h"

#include <filesystem>
#include <string>

namespace solvane::host {

/// Reads the text of a JSON file; false with a text that names the file and the place, and for the mistakes
/// of those who write JSON by hand what to do.
bool parseDocument(const std::filesystem::path& file, const std::string& text, CaseJson& json,
                   std::string& error);

} // namespace solvane::host
