/// The figures of a soak and their limits. A segment runs in a process of its own, which may crash; so it
/// writes each figure at once, as a line of a file.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace solvane::soak {

enum class Bound { none, atMost, atLeast };

struct Limit {
    const char* segment;
    const char* figure;
    const char* unit;
    Bound bound;
    double limit;
};

/// Where a segment puts its figures.
class Figures {
public:
    Figures(std::wstring file, std::string segment) : file_(std::move(file)), segment_(std::move(segment)) {}

    /// A figure of the table in Limits.h; the soak fails on any other.
    void put(std::string_view figure, double value) const;

private:
    std::wstring file_;
    std::string segment_;
};

/// Values by segment and figure.
using FigureValues = std::map<std::pair<std::string, std::string>, double>;
/// The figures in the file; if a figure has several values, the last.
FigureValues readFigures(const std::wstring& file);

/// Prints a segment's figures as rows in Markdown. False if one is missing, not a number, unknown or beyond
/// its limit.
bool printTable(const FigureValues& values, const std::string& segment);
void printTableHead();

} // namespace solvane::soak
