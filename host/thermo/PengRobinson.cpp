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

// Names and derivation follow M. L. Michelsen, J. M. Mollerup, Thermodynamic Models: Fundamentals and
// Computational Aspects, chapter 3: F is the residual Helmholtz energy over RT as a function of T, V, n,
//   F = -n g(V, B) - D/T f(V, B),   B = sum n b,   D = (sum n sqrt(a))^2,
// and an index is a derivative. Everything here is for one mole in all.

/// The first derivatives of F at one temperature, volume and composition.
struct PengRobinson::State {
    const Mixture& mixture;
    double t;
    double v;
    double b = mixture.b;
    double d = mixture.rootA * mixture.rootA;

    double g = std::log1p(-b / v);
    double gB = -1 / (v - b);
    double f = attractionLogarithm(v, b) / (gasConstant * b * (delta1 - delta2));
    double fV = -1 / (gasConstant * (v + delta1 * b) * (v + delta2 * b));
    double fB = -(f + v * fV) / b;
    double FB = -gB - d / t * fB;
    double FD = -f / t;

    /// The derivative of D to the moles of a compound.
    double slopeOfD(double rootA) const { return 2 * mixture.rootA * rootA; }
};

struct PengRobinson::SecondDerivatives {
    const State& s;
    double v = s.v;
    double b = s.b;
    double dT = 2 * s.mixture.rootA * s.mixture.rootASlope;

    double gV = b / (v * (v - b));
    double gVV = 1 / (v * v) - 1 / ((v - b) * (v - b));
    double gBV = 1 / ((v - b) * (v - b));
    double gBB = -gBV;
    double fVV = (1 / ((v + delta2 * b) * (v + delta2 * b)) - 1 / ((v + delta1 * b) * (v + delta1 * b))) /
                 (gasConstant * b * (delta1 - delta2));
    double fBV = -(2 * s.fV + v * fVV) / b;
    double fBB = -(2 * s.fB + v * fBV) / b;

    double FnB = -s.gB;
    double FBB = -gBB - s.d / s.t * fBB;
    double FBD = -s.fB / s.t;
    double FBV = -gBV - s.d / s.t * fBV;
    double FDV = -s.fV / s.t;
    double FBT = (s.d / s.t - dT) / s.t * s.fB;
    double FDT = s.f / (s.t * s.t);
    double FVV = -gVV - s.d / s.t * fVV;
    double FVT = (s.d / s.t - dT) / s.t * s.fV;
};

Fugacity PengRobinson::fugacity(Root root, double pressure, std::span<const double> composition,
                                FugacityDerivatives* derivatives) const {
    const Mixture mixture = mix(composition);
    const State state{mixture, temperature_, volume(mixture, root, pressure)};
    const double z = pressure * state.v / (gasConstant * state.t);
    Fugacity result{state.v, state.b, std::vector<double>(count())};
    for (std::size_t i = 0; i < count(); ++i)
        result.logCoefficient[i] =
            -state.g + state.FB * covolume_[i] + state.FD * state.slopeOfD(rootA_[i]) - std::log(z);
    if (derivatives)
        *derivatives = differentiate(state, pressure);
    return result;
}

FugacityDerivatives PengRobinson::differentiate(const State& state, double pressure) const {
    const SecondDerivatives second{state};
    const std::size_t n = count();
    const double t = state.t;
    const double r = gasConstant;
    const double pressureByVolume = -r * t * (second.FVV + 1 / (state.v * state.v));
    const double pressureByTemperature = pressure / t - r * t * second.FVT;

    FugacityDerivatives result{std::vector<double>(n * n), std::vector<double>(n), std::vector<double>(n)};
    std::vector<double> pressureByMoles(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double Di = state.slopeOfD(rootA_[i]);
        const double DiT = 2 * (state.mixture.rootASlope * rootA_[i] + state.mixture.rootA * rootASlope_[i]);
        pressureByMoles[i] = r * t * (1 / state.v + second.gV - second.FBV * covolume_[i] - second.FDV * Di);
        const double partialVolume = -pressureByMoles[i] / pressureByVolume;
        const double FiT = second.FBT * covolume_[i] + second.FDT * Di + state.FD * DiT;
        result.logTemperature[i] = t * FiT + 1 - partialVolume * pressureByTemperature / r;
        result.logPressure[i] = pressure * partialVolume / (r * t) - 1;
    }
    for (std::size_t i = 0; i < n; ++i) {
        const double Di = state.slopeOfD(rootA_[i]);
        for (std::size_t j = 0; j < n; ++j) {
            const double Dj = state.slopeOfD(rootA_[j]);
            const double Fij = second.FnB * (covolume_[i] + covolume_[j]) +
                               second.FBD * (covolume_[i] * Dj + covolume_[j] * Di) +
                               second.FBB * covolume_[i] * covolume_[j] +
                               state.FD * 2 * rootA_[i] * rootA_[j];
            result.moles[i * n + j] =
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
