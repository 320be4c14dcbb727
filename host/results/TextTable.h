/// Columns of text, UTF-8.
#pragma once

#include <string>
#include <vector>

namespace solvane::host {

using Line = std::vector<std::string>;

/// Aligns one line or more, all of the same length, in columns; the first `labels` columns to the left.
std::string columns(const std::vector<Line>& lines, std::size_t labels);

/// Formats a number like printf.
std::string numberText(const char* format, double value);

} // namespace solvane::host
