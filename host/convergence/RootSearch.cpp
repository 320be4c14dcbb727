#include "RootSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace solvane::host {

RootSearch::RootSearch(RootPoint first, RootPoint last, double resolution)
    : resolution_(resolution),
      best_(last),
      opposite_(first),
      former_(first),
      step_(last.x - first.x),
      stepBefore_(step_) {
    sort();
}

/// The best point comes first. A former one that lies beyond it is of no use, and the next step is a secant.
void RootSearch::sort() {
    if (std::abs(opposite_.y) < std::abs(best_.y)) {
        std::swap(best_, opposite_);
        former_ = opposite_;
    }
}

double RootSearch::leastStep() const {
    return 2 * std::numeric_limits<double>::epsilon() * std::abs(best_.x) + resolution_ / 2;
}

bool RootSearch::isNarrow() const {
    return std::abs(opposite_.x - best_.x) <= 2 * leastStep();
}

/// The step to where a parabola of x over y, or a line, through the known points is 0. A bisection if that is
/// far off, or if the steps do not at least halve from one to the one after the next.
double RootSearch::interpolation() {
    const double middle = (opposite_.x - best_.x) / 2;
    const double slope = best_.y / former_.y;
    double p, q; // the step is p/q
    if (former_.x == opposite_.x) {
        p = 2 * middle * slope;
        q = 1 - slope;
    } else {
        const double r = best_.y / opposite_.y;
        const double t = former_.y / opposite_.y;
        p = slope * (2 * middle * t * (t - r) - (best_.x - former_.x) * (r - 1));
        q = (t - 1) * (r - 1) * (slope - 1);
    }
    if (p > 0)
        q = -q;
    p = std::abs(p);
    const bool isGood =
        2 * p < std::min(3 * middle * q - std::abs(leastStep() * q), std::abs(stepBefore_ * q));
    stepBefore_ = isGood ? step_ : middle;
    return isGood ? p / q : middle;
}

double RootSearch::next() {
    const double middle = (opposite_.x - best_.x) / 2;
    const double least = leastStep();
    if (std::abs(stepBefore_) < least || std::abs(former_.y) <= std::abs(best_.y))
        step_ = stepBefore_ = middle;
    else
        step_ = interpolation();
    former_ = best_;
    best_.x += std::abs(step_) > least ? step_ : std::copysign(least, middle);
    return best_.x;
}

void RootSearch::put(double y) {
    best_.y = y;
    if ((y > 0) == (opposite_.y > 0)) {
        opposite_ = former_;
        step_ = stepBefore_ = best_.x - former_.x;
    }
    sort();
}

} // namespace solvane::host
