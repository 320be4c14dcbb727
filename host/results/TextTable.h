/// Columns of text, UTF-8.
#pragma once

#include <string>
#include <vector>

namespace solvane::host {

using Line = std::vector<std::string>;

/// Lines of the same length, the first of them a header; the first `labels` columns are labels and units.
struct Table {
    std::vector<Line> lines{};
    std::size_t labels = 0;
};

/// Aligns one line or more, all of the same length, in columns; the first `labels` columns to the left.
std::string columns(const std::vector<Line>& lines, std::size_t labels);

/// The table as text; empty for one without lines.
std::string columns(const Table& table);

} // namespace solvane::host
