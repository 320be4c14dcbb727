/// The states of a mixture that have a given vapour fraction: bubble line, dew line, and those between.
#pragma once

#include "Mixture.h"
#include "PengRobinson.h"

namespace solvane::host {

/// A vapour and a liquid in equilibrium.
struct SaturatedState {
    double temperature = 0; ///< K
    double pressure = 0;    ///< Pa
    std::vector<double> vapor;
    std::vector<double> liquid;
};

/// The line in the space of points (ln K of each compound, K = y/x; ln T; ln P). Its equations: equal
/// fugacities, and mole fractions of both phases that sum alike (M. L. Michelsen, Fluid Phase Equilibria 4
/// (1980) 1).
class SaturationLine {
public:
    using Point = std::vector<double>;

    /// For two compounds or more; the mixture must outlive the line.
    SaturationLine(const Mixture& mixture, double vaporFraction);

    double vaporFraction() const { return vaporFraction_; }
    std::size_t temperatureIndex() const { return n_; }
    std::size_t pressureIndex() const { return n_ + 1; }

    /// The point by Wilson's K values with the variable (T or P) held.
    Point estimate(std::size_t held, double logValue);

    /// Moves the point onto the line by Newton's method with one variable held where it is, and counts its
    /// iterations. False if it does not converge, or if the two phases are the same, both are liquids, or the
    /// vapour is denser than the liquid.
    bool correct(Point& point, std::size_t held, int& iterations);

    /// How the variables of a point on the line change with the held one. False if the line turns back there.
    bool tangent(const Point& point, std::size_t held, Point& direction);

    SaturatedState state(const Point& point);

private:
    struct Side {
        std::vector<double> amounts; ///< that the K values give
        double total = 0;
        std::vector<double> composition;
        Fugacity fugacity;

        void normalize();
    };

    void divide(const Point& point);
    void evaluate(const Point& point);
    void differentiate(const Point& point, std::size_t held);
    bool isOrdered() const;

    const Mixture& mixture_;
    double vaporFraction_;
    std::size_t n_;
    PengRobinson equation_;
    // At the last point:
    Point evaluated_;
    Side vapor_;
    Side liquid_;
    std::vector<double> residual_;
    std::vector<double> jacobian_;
    std::vector<double> step_;
};

} // namespace solvane::host
