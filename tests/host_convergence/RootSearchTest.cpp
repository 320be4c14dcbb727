#include "convergence/RootSearch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace solvane::host {

namespace {

struct Row {
    const char* what;
    std::function<double(double)> function;
    double first, last;
    double root;
    int calls; ///< at most, after the ends
};

constexpr double resolution = 1e-10;

/// Searches until the value is within 1e-9 or the interval is narrow. Returns the count of calls.
int search(const Row& row, RootSearch& search) {
    int calls = 0;
    while (!search.isNarrow() && !(std::abs(search.best().y) <= 1e-9)) {
        const double x = search.next();
        EXPECT_TRUE((row.first <= x) == (x <= row.last)) << row.what << ": " << x << " is outside";
        search.put(row.function(x));
        ++calls;
    }
    return calls;
}

RootSearch searchOf(const Row& row) {
    return {{row.first, row.function(row.first)}, {row.last, row.function(row.last)}, resolution};
}

TEST(RootSearch, findsRootsInFewCalls) {
    const Row rows[] = {
        {"a line", [](double x) { return 3 * x - 1; }, -4, 1, 1.0 / 3, 2},
        {"from right to left", [](double x) { return 2 - x * x; }, 2, 0, std::sqrt(2.0), 8},
        {"a cube", [](double x) { return x * x * x - 2 * x - 5; }, 2, 3, 2.0945514815423265, 8},
        {"a steep exponential", [](double x) { return std::exp(20 * x) - 1e4; }, 0, 1, std::log(1e4) / 20,
         20},
        {"flat at the root", [](double x) { return std::pow(x - 0.3, 9) * 1e9; }, 0, 1, 0.3, 50},
        {"a kink", [](double x) { return x < 0.7 ? 0.001 * (x - 0.7) : 100 * (x - 0.7); }, 0, 1, 0.7, 25},
    };
    for (const Row& row : rows) {
        RootSearch root = searchOf(row);
        EXPECT_LE(search(row, root), row.calls) << row.what;
        EXPECT_LE(std::abs(root.best().y), 1e-9) << row.what;
        EXPECT_NEAR(root.best().x, row.root, 0.02 * std::abs(row.root)) << row.what;
    }
}

TEST(RootSearch, closesInOnAJump) {
    const Row rows[] = {
        {"a step", [](double x) { return x < 0.4 ? -1 : 1; }, 0, 1, 0.4, 60},
        {"a small and a large side", [](double x) { return x < 0.4 ? -1e-3 : 50 * x; }, 0, 1, 0.4, 80},
        {"a pole", [](double x) { return 1 / (x - 0.4); }, 0, 1, 0.4, 80},
    };
    for (const Row& row : rows) {
        RootSearch root = searchOf(row);
        EXPECT_LE(search(row, root), row.calls) << row.what;
        EXPECT_TRUE(root.isNarrow()) << row.what;
        EXPECT_LE((root.best().x - row.root) * (root.opposite().x - row.root), 0) << row.what;
        EXPECT_LE(root.best().y * root.opposite().y, 0) << row.what;
        EXPECT_NEAR(root.best().x, row.root, 3 * resolution) << row.what;
    }
}

} // namespace

} // namespace solvane::host
