/// Compressibility factors that solve the Peng-Robinson cubic.
#pragma once

namespace solvane::host {

/// The outermost roots above B of Z^3 - (1 - B) Z^2 + (A - 3 B^2 - 2 B) Z - (A B - B^2 - B^3) = 0 to the last
/// digits, with A = aP/(RT)^2 and B = bP/(RT) > 0. They are equal where there is but one.
class CompressibilityRoots {
public:
    CompressibilityRoots(double a, double b);

    double smallest() const { return firstIsSmallest_ ? first_ : other(); }
    double largest() const { return firstIsSmallest_ ? other() : first_; }

private:
    double value(double z) const { return ((z + c2_) * z + c1_) * z + c0_; }
    double rootFrom(double start) const;
    double other() const;

    double b_;
    double c2_, c1_, c0_; ///< coefficients
    bool firstIsSmallest_;
    double first_; ///< the root that is found first, on the far side of the inflection
};

} // namespace solvane::host
