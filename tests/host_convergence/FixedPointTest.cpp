#include "convergence/FixedPoint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace solvane::host {

namespace {

using Vector = std::vector<double>;

constexpr int never = 301;

/// Calls until the image is the guess within 1e-10.
int callsToConverge(FixedPointMethod method, const std::function<Vector(const Vector&)>& function, Vector x) {
    FixedPoint search(method);
    for (int calls = 1; calls < never; ++calls) {
        const Vector image = function(x);
        double worst = 0;
        for (std::size_t i = 0; i < x.size(); ++i)
            worst = std::max(worst, std::abs(image[i] - x[i]));
        if (worst <= 1e-10)
            return calls;
        x = search.next(x, image);
    }
    return never;
}

/// Each variable feeds the next one, and the last one the first.
Vector chain(const Vector& x) {
    Vector image(x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        image[i] = 0.3 * x[i] + 0.4 * x[(i + x.size() - 1) % x.size()] + (i == 0);
    return image;
}

struct Row {
    const char* what;
    std::function<Vector(const Vector&)> function;
    Vector start;
    std::array<int, fixedPointMethods.size()> calls; ///< at most, by method
};

TEST(FixedPoint, convergesByEachMethod) {
    const Row rows[] = {
        {"a half recycled", [](const Vector& x) { return Vector{0.5 * (x[0] + 1)}; }, {0}, {40, 4, 4, 4}},
        {"much recycled", [](const Vector& x) { return Vector{0.95 * (x[0] + 1)}; }, {0}, {never, 80, 4, 4}},
        {"swinging", [](const Vector& x) { return Vector{3 - 1.5 * x[0]}; }, {0}, {never, 20, 5, 5}},
        {"a constant beside",
         [](const Vector& x) { return Vector{1, 0.8 * x[1] + 0.1}; },
         {1, 0},
         {110, 5, 5, 5}},
        {"coupled",
         [](const Vector& x) {
             return Vector{0.3 * x[0] + 0.4 * x[1] + 1, 0.3 * x[0] + 0.2 * x[1] * x[1] / (1 + x[1])};
         },
         {0, 0},
         {60, 60, 15, 15}},
        {"two alike",
         [](const Vector& x) { return Vector{std::cos(x[0]), std::cos(x[0])}; },
         {0, 0},
         {70, 10, 10, 10}},
        {"a chain of more variables than secants", chain, Vector(12), {65, 75, 25, 45}},
        {"no fixed point",
         [](const Vector& x) { return Vector{x[0] + 1}; },
         {0},
         {never, never, never, never}},
    };
    for (const Row& row : rows)
        for (std::size_t i = 0; i < fixedPointMethods.size(); ++i) {
            const int calls = callsToConverge(fixedPointMethods[i].method, row.function, row.start);
            EXPECT_LE(calls, row.calls[i]) << row.what << ", " << fixedPointMethods[i].name;
            EXPECT_EQ(calls == never, row.calls[i] == never) << row.what << ", " << fixedPointMethods[i].name;
        }
}

} // namespace

} // namespace solvane::host
