/// Compressibility factors that solve the Peng-Robinson cubic.
#pragma once

namespace solvane::host {

/// The outermost roots above B; equal where there is but one.
struct CompressibilityRoots {
    double smallest;
    double largest;
};

/// Solves Z^3 - (1 - B) Z^2 + (A - 3 B^2 - 2 B) Z - (A B - B^2 - B^3) = 0 for Z > B, to the last digits, with
/// A = aP/(RT)^2 and B = bP/(RT) > 0.
CompressibilityRoots compressibilityRoots(double a, double b);

} // namespace solvane::host
