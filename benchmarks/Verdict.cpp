#include "Verdict.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace solvane {

namespace {

struct Row {
    std::string what;
    std::string measured;
    std::string spread;
    std::string microseconds;
    std::string goal;
    std::string verdict;
};
std::vector<Row> rows;

/// Three digits, without an exponent.
std::string figure(double value) {
    char text[32];
    std::snprintf(text, sizeof text, value < 999.5 ? "%.3g" : "%.0f", value);
    return text;
}

struct Spread {
    double lowest = 0;
    double highest = 0;
};

/// Of the medians of five parts of the turns, or of all where there are fewer.
Spread spreadOf(const std::vector<double>& values) {
    const std::size_t parts = std::min<std::size_t>(5, values.size());
    std::vector<double> medians;
    for (std::size_t part = 0; part < parts; ++part) {
        const auto place = [&](std::size_t number) {
            return values.begin() + static_cast<std::ptrdiff_t>(number * values.size() / parts);
        };
        medians.push_back(median({place(part), place(part + 1)}));
    }
    if (medians.empty())
        return {};
    const auto [lowest, highest] = std::ranges::minmax(medians);
    return {lowest, highest};
}

/// How far the reference, which never changes, varied by itself; says nothing of a greater miss.
std::string miss(double factorOfMiss, const std::vector<double>& references) {
    const auto [lowest, highest] = spreadOf(references);
    if (lowest <= 0 || factorOfMiss <= 0 || highest / lowest < factorOfMiss)
        return "missed";
    return "noise-limited: the reference varied by a factor of " + figure(highest / lowest);
}

std::string microsecondsOf(const Timed& timed) {
    return figure(median(timed.times)) + " / " + figure(median(timed.references));
}

bool print(Row row) {
    const bool isMet = row.verdict.empty();
    std::printf("  %-62s %8s   (%s)   goal %-8s %s\n", row.what.c_str(), row.measured.c_str(),
                row.spread.c_str(), row.goal.c_str(), isMet ? "PASS" : "MISS");
    std::printf("      microseconds: %s\n", row.microseconds.c_str());
    std::fflush(stdout);
    rows.push_back(std::move(row));
    return isMet;
}

bool printRatio(const std::string& what, const Timed& timed, const char* word, double goal) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < std::min(timed.times.size(), timed.references.size()); ++i)
        ratios.push_back(timed.times[i] / timed.references[i]);
    const double measured = median(ratios);
    const Spread spread = spreadOf(ratios);
    const bool isAtMost = *word == '<';
    const bool isMet = measured > 0 && (isAtMost ? measured <= goal : measured >= goal);
    return print({what, figure(measured), figure(spread.lowest) + " to " + figure(spread.highest),
                  microsecondsOf(timed), std::string(word) + " " + figure(goal),
                  isMet ? "" : miss(isAtMost ? measured / goal : goal / measured, timed.references)});
}

} // namespace

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

double microseconds(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

bool printAtMost(const std::string& what, const Timed& timed, double goal) {
    return printRatio(what, timed, "<=", goal);
}

bool printAtLeast(const std::string& what, const Timed& timed, double goal) {
    return printRatio(what, timed, ">=", goal);
}

bool printTimeAtMost(const std::string& what, const Timed& timed, double goal) {
    const double measured = median(timed.times);
    const Spread spread = spreadOf(timed.times);
    const bool isMet = measured > 0 && measured <= goal;
    return print({what, figure(measured) + " us", figure(spread.lowest) + " to " + figure(spread.highest),
                  microsecondsOf(timed), "<= " + figure(goal) + " us",
                  isMet ? "" : miss(measured / goal, timed.references)});
}

void printTable() {
    std::printf("\n| What | Measured | Five turns | Microseconds | Goal | |\n|---|---|---|---|---|---|\n");
    printRows();
}

void printRows() {
    for (const Row& row : rows)
        std::printf("| %s | %s | %s | %s | %s | %s |\n", row.what.c_str(), row.measured.c_str(),
                    row.spread.c_str(), row.microseconds.c_str(), row.goal.c_str(), row.verdict.c_str());
}

} // namespace solvane
