#include "Cubic.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

CompressibilityRoots::CompressibilityRoots(double a, double b)
    : b_(b), c2_(b - 1), c1_(a - 3 * b * b - 2 * b), c0_(-(a * b - b * b - b * b * b)) {
    const double inflection = -c2_ / 3;
    // The cubic is -2 B^2 at Z = B, so a root to the left of the inflection requires B to lie left of it.
    firstIsSmallest_ = b < inflection && value(inflection) > 0;
    // Attraction only makes the volume smaller: without it, Z is 1 + B.
    first_ = rootFrom(firstIsSmallest_ ? b : 1 + b);
}

/// Newton's iteration from a start next to the root, or beyond it on the side where the cubic bends away from
/// the axis, so that every step comes nearer.
double CompressibilityRoots::rootFrom(double start) const {
    constexpr double nearby = 1e-8; // below this, a step that does not shrink is rounding
    double z = start;
    double lastStep = INFINITY;
    for (int i = 0; i < 200; ++i) {
        const double slope = (3 * z + 2 * c2_) * z + c1_;
        const double bend = std::abs(3 * z + c2_); // half the second derivative
        const double step = value(z) / slope;
        const bool rounding = !(std::abs(step) < lastStep) && std::abs(step) <= nearby * std::abs(z);
        if (rounding || !std::isfinite(step))
            break;
        z -= step;
        lastStep = std::abs(step);
        // What this step leaves of the error is the next term of Taylor's series.
        if (bend * step * step <= 1e-17 * std::abs(z * slope))
            break;
    }
    return z;
}

/// The other outermost root, from the quadratic that remains without the first.
double CompressibilityRoots::other() const {
    if (firstIsSmallest_) {
        const double p = c2_ + first_;
        const double q = c1_ + first_ * p;
        const double discriminant = p * p - 4 * q;
        return discriminant < 0 ? first_ : std::max(first_, rootFrom((-p + std::sqrt(discriminant)) / 2));
    }
    // Dividing from the low end keeps the digits of roots that are tiny beside the largest.
    const double q = -c0_ / first_;
    const double p = (q - c1_) / first_;
    const double discriminant = p * p - 4 * q;
    if (discriminant < 0 || p >= 0)
        return first_;
    const double smallest = rootFrom(2 * q / (-p + std::sqrt(discriminant)));
    return smallest > b_ && smallest < first_ ? smallest : first_;
}

} // namespace solvane::host
