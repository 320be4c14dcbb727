/// Columns of text, UTF-8.
#pragma once

#include <string>
#include <vector>

namespace solvane::host {

using Line = std::vector<std::string>;

/// One line or more, all of the same length, as columns. The first `labels` of them are aligned to the left.
std::string columns(const std::vector<Line>& lines, std::size_t labels);

/// A number by printf's format.
std::string numberText(const char* format, double value);

} // namespace solvane::host
