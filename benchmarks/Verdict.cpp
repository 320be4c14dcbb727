#include "Verdict.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace solvane {

namespace {

struct Row {
    std::string what;
    double measured;
    std::string goal;
    bool isMet;
};
std::vector<Row> rows;

bool print(const std::string& what, double measured, const char* word, double goal, bool isMet) {
    char goalText[32];
    std::snprintf(goalText, sizeof goalText, "%s %.4g", word, goal);
    std::printf("  %-62s %8.3f   goal %-8s %s\n", what.c_str(), measured, goalText, isMet ? "PASS" : "MISS");
    std::fflush(stdout);
    rows.push_back({what, measured, goalText, isMet});
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

double milliseconds(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

bool printAtMost(const std::string& what, double measured, double goal) {
    return print(what, measured, "<=", goal, measured > 0 && measured <= goal);
}

bool printAtLeast(const std::string& what, double measured, double goal) {
    return print(what, measured, ">=", goal, measured >= goal);
}

void printTable() {
    std::printf("\n| Ratio | Measured | Goal | |\n|---|---|---|---|\n");
    for (const Row& row : rows)
        std::printf("| %s | %.3g | %s | %s |\n", row.what.c_str(), row.measured, row.goal.c_str(),
                    row.isMet ? "" : "missed");
}

} // namespace solvane
