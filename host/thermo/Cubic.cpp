#include "Cubic.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

struct Cubic {
    double c2, c1, c0;

    double value(double z) const { return ((z + c2) * z + c1) * z + c0; }
    double slope(double z) const { return (3 * z + 2 * c2) * z + c1; }

    /// Newton's iteration from a start next to the root, or beyond it on the side where the cubic bends away
    /// from the axis, so that every step comes nearer.
    double rootFrom(double start) const {
        constexpr double nearby = 1e-8; // below this, a step that does not shrink is rounding
        double z = start;
        double lastStep = INFINITY;
        for (int i = 0; i < 200; ++i) {
            const double step = value(z) / slope(z);
            const bool rounding = !(std::abs(step) < lastStep) && std::abs(step) <= nearby * std::abs(z);
            if (rounding || !std::isfinite(step))
                break;
            z -= step;
            lastStep = std::abs(step);
            if (lastStep <= 1e-16 * std::abs(z))
                break;
        }
        return z;
    }
};

} // namespace

CompressibilityRoots compressibilityRoots(double a, double b) {
    const Cubic cubic{b - 1, a - 3 * b * b - 2 * b, -(a * b - b * b - b * b * b)};
    const double inflection = -cubic.c2 / 3;

    // The cubic is -2 B^2 at Z = B, so a root to the left of the inflection requires B to lie left of it.
    if (b < inflection && cubic.value(inflection) > 0) {
        const double smallest = cubic.rootFrom(b);
        const double p = cubic.c2 + smallest;
        const double q = cubic.c1 + smallest * p;
        const double discriminant = p * p - 4 * q;
        if (discriminant < 0)
            return {smallest, smallest};
        return {smallest, std::max(smallest, cubic.rootFrom((-p + std::sqrt(discriminant)) / 2))};
    }

    const double bound =
        2 * std::max({std::abs(cubic.c2), std::sqrt(std::abs(cubic.c1)), std::cbrt(std::abs(cubic.c0))});
    const double largest = cubic.rootFrom(bound);
    // Dividing from the low end keeps the digits of roots that are tiny beside the largest.
    const double q = -cubic.c0 / largest;
    const double p = (q - cubic.c1) / largest;
    const double discriminant = p * p - 4 * q;
    if (discriminant < 0 || p >= 0)
        return {largest, largest};
    const double smallest = cubic.rootFrom(2 * q / (-p + std::sqrt(discriminant)));
    return {smallest > b && smallest < largest ? smallest : largest, largest};
}

} // namespace solvane::host
