#include "Verdict.h"

#include <algorithm>
#include <cstdio>

namespace solvane {

namespace {

bool print(const std::string& what, double measured, const char* word, double goal, bool isMet) {
    std::printf("  %-58s %8.3f   goal %s %.2f   %s\n", what.c_str(), measured, word, goal,
                isMet ? "PASS" : "MISS");
    std::fflush(stdout);
    return isMet;
}

} // namespace

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

std::vector<double> ratios(const std::vector<double>& of, const std::vector<double>& to) {
    std::vector<double> result;
    for (std::size_t i = 0; i < std::min(of.size(), to.size()); ++i)
        result.push_back(of[i] / to[i]);
    return result;
}

bool printAtMost(const std::string& what, double measured, double goal) {
    return print(what, measured, "<=", goal, measured > 0 && measured <= goal);
}

bool printAtLeast(const std::string& what, double measured, double goal) {
    return print(what, measured, ">=", goal, measured >= goal);
}

} // namespace solvane
