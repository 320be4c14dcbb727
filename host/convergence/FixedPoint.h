/// The search for a fixed point x = g(x) of a function that is expensive and has no derivatives.
#pragma once

#include <array>
#include <string_view>
#include <vector>

namespace solvane::host {

/// How the next guess follows from the earlier ones and their images.
enum class FixedPointMethod {
    direct,   ///< the image itself
    wegstein, ///< a secant for each variable, within bounds
    broyden,  ///< a secant for all variables together
    anderson, ///< the combination of the last few passes that leaves the smallest residual
};

struct FixedPointMethodName {
    FixedPointMethod method;
    std::string_view name;
};

inline constexpr std::array fixedPointMethods{
    FixedPointMethodName{FixedPointMethod::direct, "direct"},
    FixedPointMethodName{FixedPointMethod::wegstein, "wegstein"},
    FixedPointMethodName{FixedPointMethod::broyden, "broyden"},
    FixedPointMethodName{FixedPointMethod::anderson, "anderson"},
};

/// One search. The caller evaluates the function, and scales the variables so that all are of the order of 1.
class FixedPoint {
public:
    explicit FixedPoint(FixedPointMethod method) : method_(method) {}

    /// The next guess, from the last one, which need not be that of the former call, and its image. The first
    /// is the image.
    std::vector<double> next(const std::vector<double>& guess, const std::vector<double>& image);

private:
    std::vector<double> wegstein(const std::vector<double>& guess, const std::vector<double>& image) const;
    std::vector<double> broyden(const std::vector<double>& guess, const std::vector<double>& image);

    /// Anderson's acceleration as H. F. Walker and P. Ni write it: Anderson Acceleration for Fixed-Point
    /// Iterations, SIAM J. Numer. Anal. 49 (2011) 1715, equation (2.2). Secants that depend on newer ones do
    /// not count; without any the image is the next guess.
    std::vector<double> anderson(const std::vector<double>& guess, const std::vector<double>& image);

    /// How the residual g(x) - x and the image changed from one guess to the next.
    struct Secant {
        std::vector<double> residual;
        std::vector<double> image;
    };

    FixedPointMethod method_;
    // Of the former call; empty before the first.
    std::vector<double> guess_;
    std::vector<double> image_;
    std::vector<double> inverse_; ///< Broyden's estimate of the inverse derivative of g(x) - x, by rows
    std::vector<Secant> secants_; ///< Anderson's, the newest first
};

} // namespace solvane::host
