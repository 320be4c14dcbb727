#include "HomogeneousPhase.h"

#include "Cubic.h"
#include "CubicParameters.h"

namespace solvane::host {

template <class Scalar>
HomogeneousPhase<Scalar>::HomogeneousPhase(std::span<const Compound* const> compounds, Phase phase,
                                           Scalar temperature, Scalar pressure,
                                           std::span<const Scalar> composition)
    : compounds_(compounds), temperature_(temperature), pressure_(pressure) {
    using std::log;
    using std::log1p;
    using std::sqrt;
    const Scalar rootOfTemperature = sqrt(temperature);
    Scalar rootSlope = 0;
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        const AttractionRoot root = attractionRoot(*compounds[i]);
        mixtureRootA_ += composition[i] * root.value(rootOfTemperature);
        rootSlope += composition[i] * root.slope(rootOfTemperature);
        b_ += composition[i] * covolume(*compounds[i]);
    }
    const Scalar a = mixtureRootA_ * mixtureRootA_;
    const Scalar aSlope = 2 * mixtureRootA_ * rootSlope;
    // The root's slope goes with 1/sqrt(T).
    const Scalar aCurvature = 2 * rootSlope * rootSlope - mixtureRootA_ * rootSlope / temperature;
    const Scalar rt = gasConstant * temperature;

    const CompressibilityRoots roots(plain(a * pressure / (rt * rt)), plain(b_ * pressure / rt));
    const double root = phase == Phase::vapor ? roots.largest() : roots.smallest();
    // The root is exact already; Newton's step from it only brings in how it changes with the arguments.
    const Scalar exact = root * plain(rt) / plain(pressure);
    const auto attraction = [&](Scalar v) { return (v + delta1 * b_) * (v + delta2 * b_); };
    const auto slopeAt = [&](Scalar v) {
        return a * (2 * v + (delta1 + delta2) * b_) / (attraction(v) * attraction(v)) -
               rt / ((v - b_) * (v - b_));
    };
    volume = withValue(exact - (rt / (exact - b_) - a / attraction(exact) - pressure) / slopeAt(exact),
                       plain(exact));
    pressureByVolume = slopeAt(volume);
    pressureByTemperature = gasConstant / (volume - b_) - aSlope / attraction(volume);

    const Scalar z = pressure * volume / rt;
    const Scalar logarithm = attractionLogarithm(volume, b_) / ((delta1 - delta2) * b_);
    residualEnthalpy = rt * (z - 1) + (temperature * aSlope - a) * logarithm;
    residualEntropy = gasConstant * (log(z) + log1p(-b_ / volume)) + aSlope * logarithm;
    residualHeatCapacity = temperature * aCurvature * logarithm;
}

template <class Scalar>
Scalar HomogeneousPhase<Scalar>::compressibilityFactor() const {
    return pressure_ * volume / (gasConstant * temperature_);
}

template <class Scalar>
std::vector<Scalar> HomogeneousPhase<Scalar>::logFugacityCoefficients() const {
    using std::log;
    using std::log1p;
    using std::sqrt;
    const Scalar z = compressibilityFactor();
    const Scalar repulsion = log(z) + log1p(-b_ / volume);
    const Scalar attraction = attractionLogarithm(volume, b_) /
                              ((delta1 - delta2) * b_ * gasConstant * temperature_) * mixtureRootA_;
    const Scalar rootOfTemperature = sqrt(temperature_);
    std::vector<Scalar> logarithms;
    for (const Compound* compound : compounds_) {
        const Scalar share = covolume(*compound) / b_;
        const Scalar rootA = attractionRoot(*compound).value(rootOfTemperature);
        logarithms.push_back(share * (z - 1) - repulsion - attraction * (2 * rootA - mixtureRootA_ * share));
    }
    return logarithms;
}

template struct HomogeneousPhase<double>;
template struct HomogeneousPhase<Dual>;

} // namespace solvane::host
