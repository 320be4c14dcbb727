/// What endless loops print and log, in a size that can be kept and read.
#pragma once

#include "RunResults.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// The text (UTF-8). Of a longer one than both sizes together, about that many bytes of its beginning and of
/// its end, and between them a line that says what is left out.
std::string abridged(std::string_view text, std::size_t first, std::size_t last);

/// The same, for results.
std::string abridged(std::string_view text);

/// Adds a line. Of very many lines the first and the last stay, with one between them that says how many are
/// left out.
void addLogLine(std::vector<LogLine>& log, LogLine line);

} // namespace solvane::host
