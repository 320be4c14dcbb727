#pragma once

#include <string>
#include <vector>

namespace solvane {

double median(std::vector<double> values);

/// The ratios of two series that were measured turn by turn.
std::vector<double> ratios(const std::vector<double>& of, const std::vector<double>& to);

/// One line: the measured figure, the goal, PASS or MISS. True for a pass.
bool printAtMost(const std::string& what, double measured, double goal);
bool printAtLeast(const std::string& what, double measured, double goal);

} // namespace solvane
