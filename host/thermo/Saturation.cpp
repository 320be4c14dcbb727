#include "Saturation.h"

#include "PengRobinson.h"

#include <array>
#include <cmath>

namespace solvane::host {

namespace {

bool boils(const Compound& compound, double temperature, double pressure) {
    const std::array compounds{&compound};
    const std::array pure{1.0};
    return PengRobinson(compounds, temperature).fugacity(Root::stable, pressure, pure).isVaporLike();
}

/// Halves the interval until its ends are neighbours: `isAbove` is false at the lower end only.
template <typename Test>
double bisect(double low, double high, const Test& isAbove) {
    for (;;) {
        const double middle = low + (high - low) / 2;
        if (middle <= low || middle >= high)
            return middle;
        (isAbove(middle) ? high : low) = middle;
    }
}

} // namespace

std::optional<double> vaporPressure(const Compound& compound, double temperature) {
    if (temperature >= compound.criticalTemperature)
        return std::nullopt;
    constexpr double lowest = -200; // ln Pa: there every compound boils below a few kelvins
    return std::exp(bisect(lowest, std::log(compound.criticalPressure), [&](double logPressure) {
        return !boils(compound, temperature, std::exp(logPressure));
    }));
}

std::optional<double> boilingTemperature(const Compound& compound, double pressure) {
    if (pressure >= compound.criticalPressure)
        return std::nullopt;
    constexpr double lowest = 10; // K
    return bisect(lowest, compound.criticalTemperature,
                  [&](double temperature) { return boils(compound, temperature, pressure); });
}

} // namespace solvane::host
