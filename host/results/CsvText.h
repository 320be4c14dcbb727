/// Comma-separated text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// The text as a cell, in quotes if it needs them.
std::string csvCell(const std::string& text);

/// The cells of a line, without a line end.
std::string csvLine(const std::vector<std::string>& cells);

/// The cells of all lines, of any line end; empty lines are left out.
std::vector<std::vector<std::string>> readCsv(std::string_view text);

} // namespace solvane::host
