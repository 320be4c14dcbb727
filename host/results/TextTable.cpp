#include "TextTable.h"

#include <algorithm>

namespace solvane::host {

namespace {

/// The count of characters of a UTF-8 text.
std::size_t width(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

/// Pads to a width: labels and units on the right, numbers on the left.
std::string padded(const std::string& text, std::size_t total, bool isNumber) {
    const std::string blanks(total - std::min(total, width(text)), ' ');
    return isNumber ? blanks + text : text + blanks;
}

} // namespace

std::string columns(const std::vector<Line>& lines, std::size_t labels) {
    std::vector<std::size_t> widths(lines.front().size());
    for (const Line& line : lines)
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], width(line[i]));
    std::string text;
    for (const Line& line : lines) {
        std::string row;
        for (std::size_t i = 0; i < line.size(); ++i)
            row += (i == 0 ? "" : "  ") + padded(line[i], widths[i], i >= labels);
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + "\n";
    }
    return text;
}

std::string columns(const Table& table) {
    return table.lines.empty() ? std::string() : columns(table.lines, table.labels);
}

} // namespace solvane::host
