#include "RachfordRice.h"

#include <cmath>

namespace solvane::host {

std::optional<double> phaseFraction(std::span<const double> composition, std::span<const double> ratios) {
    const std::size_t n = composition.size();
    double excessAtZero = 0;
    double excessAtOne = 0;
    for (std::size_t i = 0; i < n; ++i) {
        excessAtZero += composition[i] * (ratios[i] - 1);
        excessAtOne += composition[i] * (1 - 1 / ratios[i]);
    }
    if (!(excessAtZero > 0 && excessAtOne < 0))
        return std::nullopt;

    // The excess of the first phase's fractions falls with its amount: Newton's method, within bounds.
    constexpr int maxIterations = 50;
    constexpr double tolerance = 1e-3;
    double low = 0;
    double high = 1;
    double fraction = 0.5;
    for (int iteration = 0; iteration < maxIterations; ++iteration) {
        double excess = 0;
        double slope = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const double share = (ratios[i] - 1) / (1 + fraction * (ratios[i] - 1));
            excess += composition[i] * share;
            slope -= composition[i] * share * share;
        }
        (excess > 0 ? low : high) = fraction;
        const double newton = fraction - excess / slope;
        const double next = newton > low && newton < high ? newton : (low + high) / 2;
        const bool isDone = std::abs(next - fraction) <= tolerance * next * (1 - next);
        fraction = next;
        if (isDone)
            break;
    }
    return fraction;
}

} // namespace solvane::host
