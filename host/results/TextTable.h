/// Columns of text, UTF-8.
#pragma once

#include <string>
#include <vector>

namespace solvane::host {

using Line = std::vector<std::string>;

/// Aligns one line or more, all of the same length, in columns; the first `labels` columns to the left.
std::string columns(const std::vector<Line>& lines, std::size_t labels);

} // namespace solvane::host
