#pragma once

#include <functional>
#include <string>
#include <vector>

namespace solvane {

/// The upper of the two middle values of an even count; 0 without values.
double median(std::vector<double> values);

/// The ratios of two series that were measured turn by turn.
std::vector<double> ratios(const std::vector<double>& of, const std::vector<double>& to);

double milliseconds(const std::function<void()>& work);

/// One line: the measured figure, the goal, PASS or MISS. True for a pass. Figures of 0, where nothing was
/// measured, miss.
bool printAtMost(const std::string& what, double measured, double goal);
bool printAtLeast(const std::string& what, double measured, double goal);

/// Everything that these two printed, as a table in Markdown.
void printTable();

} // namespace solvane
