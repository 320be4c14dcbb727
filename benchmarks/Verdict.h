/// Measured figures beside their goals, and the table of all.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace solvane {

/// The upper of the two middle values of an even count; 0 without values.
double median(std::vector<double> values);

/// What the work takes.
double microseconds(const std::function<void()>& work);

/// What was timed in turn with its reference: microseconds, a value for each turn of both.
struct Timed {
    std::vector<double> times;
    std::vector<double> references;
};

// One line: the median of the turns' ratios, the same of each fifth of the turns as lowest and highest, the
// goal, PASS or MISS. True for a pass. Figures of 0, where nothing was measured, miss.
bool printAtMost(const std::string& what, const Timed& timed, double goal);
bool printAtLeast(const std::string& what, const Timed& timed, double goal);
/// The same of the times themselves, in microseconds; the references are for comparison.
bool printTimeAtMost(const std::string& what, const Timed& timed, double goal);

/// Everything that these printed, as a table in Markdown. A row that misses its goal by less than its
/// reference varies by itself is marked, with that factor.
void printTable();
/// The same without its heading, for a program whose rows follow another's.
void printRows();

} // namespace solvane
