/// The search for a root of a function of one variable that is expensive and has no derivatives.
#pragma once

namespace solvane::host {

/// A value of the function.
struct RootPoint {
    double x = 0;
    double y = 0;
};

/// One search by Brent's method (R. P. Brent, Algorithms for Minimization without Derivatives, 1973,
/// chapter 4): inverse quadratic and linear interpolation, and a bisection where they gain too little. The
/// caller evaluates the function, and ends the search when a value is small enough, such as 0, or the
/// interval narrow.
class RootSearch {
public:
    /// Between points with values of different signs. Distances below the resolution do not count.
    RootSearch(RootPoint first, RootPoint last, double resolution);

    /// Where to evaluate the function next, and its value there. One call of each in turn.
    double next();
    void put(double y);

    /// Whether the function changes its sign within the resolution: at a root, or at a jump or a pole if the
    /// values are not small.
    bool isNarrow() const;

    /// The ends of the interval in which the sign changes, the one with the smaller value first.
    RootPoint best() const { return best_; }
    RootPoint opposite() const { return opposite_; }

private:
    void sort();
    double leastStep() const;
    double interpolation();

    double resolution_;
    RootPoint best_;
    RootPoint opposite_;
    RootPoint former_;      ///< best before the last step; `opposite_` if there is none
    double step_ = 0;       ///< the last one
    double stepBefore_ = 0; ///< the one before that
};

} // namespace solvane::host
