/// The states of a mixture that have a given vapour fraction: bubble line, dew line, and those between.
#pragma once

#include "PhaseSplit.h"

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
    SaturationLine(const Mixture& mixture, double vaporFraction)
        : mixture_(mixture), vaporFraction_(vaporFraction), n_(mixture.composition.size()) {}

    double vaporFraction() const { return vaporFraction_; }
    std::size_t temperatureIndex() const { return n_; }
    std::size_t pressureIndex() const { return n_ + 1; }

    /// The point by Wilson's K values with the variable (T or P) held.
    Point estimate(std::size_t held, double logValue) const;

    /// Moves the point onto the line by Newton's method with one variable held where it is, and counts its
    /// iterations. False if it does not converge, or if the two phases are the same, both are liquids, or the
    /// vapour is denser than the liquid.
    bool correct(Point& point, std::size_t held, int& iterations) const;

    /// How the variables of a point on the line change with the held one. False if the line turns back there.
    bool tangent(const Point& point, std::size_t held, Point& direction) const;

    SaturatedState state(const Point& point) const;

private:
    void compositions(const Point& point, std::vector<double>& x, std::vector<double>& y) const;
    void equations(const Point& point, std::size_t held, std::vector<double>& residual,
                   std::vector<double>& jacobian) const;
    bool isOrdered(const Point& point) const;

    const Mixture& mixture_;
    double vaporFraction_;
    std::size_t n_;
};

} // namespace solvane::host
