/// The figures of a soak and what they may be. A segment runs in a process of its own, which may die of what
/// it tries; so figures pass through a file, a line each, written at once.
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

    /// A figure of the table in Limits.h; one that is not there breaks the soak.
    void put(std::string_view figure, double value) const;

private:
    std::wstring file_;
    std::string segment_;
};

/// Values by segment and figure.
using FigureValues = std::map<std::pair<std::string, std::string>, double>;
/// What was put into the file; of several values of a figure the last.
FigureValues readFigures(const std::wstring& file);

/// Prints the figures of a segment's limits. False where one is missing, not a number, unknown or beyond its
/// limit.
bool printTable(const FigureValues& values, const std::string& segment);
void printTableHead();

} // namespace solvane::soak
