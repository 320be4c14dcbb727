#include "PengRobinson.h"

#include "Cubic.h"
#include "CubicParameters.h"

#include <cmath>

namespace solvane::host {

namespace {

/// Gibbs energy over RT of a root, up to a term that all roots share.
double reducedGibbs(double a, double b, double z) {
    return z - std::log(z - b) - a / ((delta1 - delta2) * b) * attractionLogarithm(z, b);
}

} // namespace

PengRobinson::PengRobinson(std::span<const Compound* const> compounds, double temperature)
    : temperature_(temperature) {
    for (const Compound* compound : compounds) {
        const AttractionRoot<double> root = attractionRoot(*compound, temperature);
        rootA_.push_back(root.value);
        rootASlope_.push_back(root.slope);
        covolume_.push_back(covolume(*compound));
    }
}

PengRobinson::Mixture PengRobinson::mix(std::span<const double> composition) const {
    Mixture mixture{0, 0, 0};
    for (std::size_t i = 0; i < composition.size(); ++i) {
        mixture.rootA += composition[i] * rootA_[i];
        mixture.rootASlope += composition[i] * rootASlope_[i];
        mixture.b += composition[i] * covolume_[i];
    }
    return mixture;
}

double PengRobinson::volume(const Mixture& mixture, Root root, double pressure) const {
    const double rt = gasConstant * temperature_;
    const double a = mixture.rootA * mixture.rootA * pressure / (rt * rt);
    const double b = mixture.b * pressure / rt;
    const CompressibilityRoots roots = compressibilityRoots(a, b);
    const bool liquid =
        root == Root::liquid ||
        (root == Root::stable && reducedGibbs(a, b, roots.smallest) < reducedGibbs(a, b, roots.largest));
    return (liquid ? roots.smallest : roots.largest) * rt / pressure;
}

// Names and road of the derivatives follow M. L. Michelsen, J. M. Mollerup, Thermodynamic Models:
// Fundamentals and Computational Aspects, chapter 3: F is the residual Helmholtz energy over RT as a function
// of T, V, n,
//   F = -n g(V, B) - D/T f(V, B),   B = sum n b,   D = (sum n sqrt(a))^2,
// and an index is a derivative. Everything here is for one mole in all.
Fugacity PengRobinson::fugacity(Root root, double pressure, std::span<const double> composition,
                                FugacityDerivatives* derivatives) const {
    const std::size_t n = count();
    const double t = temperature_;
    const double r = gasConstant;
    const Mixture mixture = mix(composition);
    const double v = volume(mixture, root, pressure);
    const double b = mixture.b;
    const double d = mixture.rootA * mixture.rootA;

    const double g = std::log1p(-b / v);
    const double gB = -1 / (v - b);
    const double f = attractionLogarithm(v, b) / (r * b * (delta1 - delta2));
    const double fV = -1 / (r * (v + delta1 * b) * (v + delta2 * b));
    const double fB = -(f + v * fV) / b;
    const double FB = -gB - d / t * fB;
    const double FD = -f / t;
    const double z = pressure * v / (r * t);

    Fugacity result{v, b, std::vector<double>(n)};
    for (std::size_t i = 0; i < n; ++i) {
        const double Di = 2 * mixture.rootA * rootA_[i];
        result.logCoefficient[i] = -g + FB * covolume_[i] + FD * Di - std::log(z);
    }
    if (!derivatives)
        return result;

    const double gV = b / (v * (v - b));
    const double gVV = 1 / (v * v) - 1 / ((v - b) * (v - b));
    const double gBV = 1 / ((v - b) * (v - b));
    const double gBB = -gBV;
    const double fVV =
        (1 / ((v + delta2 * b) * (v + delta2 * b)) - 1 / ((v + delta1 * b) * (v + delta1 * b))) /
        (r * b * (delta1 - delta2));
    const double fBV = -(2 * fV + v * fVV) / b;
    const double fBB = -(2 * fB + v * fBV) / b;
    const double dT = 2 * mixture.rootA * mixture.rootASlope;

    const double FnB = -gB;
    const double FBB = -gBB - d / t * fBB;
    const double FBD = -fB / t;
    const double FBV = -gBV - d / t * fBV;
    const double FDV = -fV / t;
    const double FBT = (d / t - dT) / t * fB;
    const double FDT = f / (t * t);
    const double FVV = -gVV - d / t * fVV;
    const double FVT = (d / t - dT) / t * fV;

    const double pressureByVolume = -r * t * (FVV + 1 / (v * v));
    const double pressureByTemperature = pressure / t - r * t * FVT;

    derivatives->moles.assign(n * n, 0);
    derivatives->logTemperature.resize(n);
    derivatives->logPressure.resize(n);
    std::vector<double> pressureByMoles(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double Di = 2 * mixture.rootA * rootA_[i];
        const double DiT = 2 * (mixture.rootASlope * rootA_[i] + mixture.rootA * rootASlope_[i]);
        pressureByMoles[i] = r * t * (1 / v + gV - FBV * covolume_[i] - FDV * Di);
        const double partialVolume = -pressureByMoles[i] / pressureByVolume;
        const double FiT = FBT * covolume_[i] + FDT * Di + FD * DiT;
        derivatives->logTemperature[i] = t * FiT + 1 - partialVolume * pressureByTemperature / r;
        derivatives->logPressure[i] = pressure * partialVolume / (r * t) - 1;
    }
    for (std::size_t i = 0; i < n; ++i) {
        const double Di = 2 * mixture.rootA * rootA_[i];
        for (std::size_t j = 0; j < n; ++j) {
            const double Dj = 2 * mixture.rootA * rootA_[j];
            const double Fij = FnB * (covolume_[i] + covolume_[j]) +
                               FBD * (covolume_[i] * Dj + covolume_[j] * Di) +
                               FBB * covolume_[i] * covolume_[j] + FD * 2 * rootA_[i] * rootA_[j];
            derivatives->moles[i * n + j] =
                Fij + 1 + pressureByMoles[i] * pressureByMoles[j] / (r * t * pressureByVolume);
        }
    }
    return result;
}

double wilsonLogVolatility(const Compound& compound, double temperature) {
    return std::log(compound.criticalPressure) +
           5.373 * (1 + compound.acentricFactor) * (1 - compound.criticalTemperature / temperature);
}

} // namespace solvane::host
