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

PengRobinson::PengRobinson(std::span<const Compound* const> compounds, double temperature) {
    compounds_.reserve(compounds.size());
    for (const Compound* compound : compounds) {
        const AttractionRoot root = attractionRoot(*compound);
        compounds_.push_back({root, covolume(*compound), 0, 0});
    }
    setTemperature(temperature);
}

void PengRobinson::setTemperature(double temperature) {
    temperature_ = temperature;
    const double root = std::sqrt(temperature);
    for (Parameters& compound : compounds_) {
        compound.rootA = compound.attraction.value(root);
        compound.rootASlope = compound.attraction.slope(root);
    }
}

double PengRobinson::volume(const Fugacity& mixture, Root root, double pressure) const {
    const double rt = gasConstant * temperature_;
    const double a = mixture.rootA * mixture.rootA * pressure / (rt * rt);
    const double b = mixture.covolume * pressure / rt;
    const CompressibilityRoots roots(a, b);
    const auto stable = [&] {
        const double smallest = roots.smallest();
        const double largest = roots.largest();
        const bool liquid = smallest < largest && reducedGibbs(a, b, smallest) < reducedGibbs(a, b, largest);
        return liquid ? smallest : largest;
    };
    const double z = root == Root::vapor    ? roots.largest()
                     : root == Root::liquid ? roots.smallest()
                                            : stable();
    return z * rt / pressure;
}

// Names and derivation follow M. L. Michelsen, J. M. Mollerup, Thermodynamic Models: Fundamentals and
// Computational Aspects, chapter 3: F is the residual Helmholtz energy over RT as a function of T, V, n,
//   F = -n g(V, B) - D/T f(V, B),   B = sum n b,   D = (sum n sqrt(a))^2,
// and an index is a derivative. Everything here is for one mole in all. The derivative of B to the moles of a
// compound is its b, that of D is 2 sqrt(D) sqrt(a), so that every derivative of F is linear in them.

Fugacity PengRobinson::fugacity(Root root, double pressure, std::span<const double> composition) const {
    Fugacity phase;
    for (std::size_t i = 0; i < compounds_.size(); ++i) {
        phase.rootA += composition[i] * compounds_[i].rootA;
        phase.rootASlope += composition[i] * compounds_[i].rootASlope;
        phase.covolume += composition[i] * compounds_[i].covolume;
    }
    phase.volume = volume(phase, root, pressure);

    const double v = phase.volume;
    const double b = phase.covolume;
    const double D = phase.rootA * phase.rootA;
    const double gB = -1 / (v - b);
    const double f = attractionLogarithm(v, b) / (gasConstant * b * (delta1 - delta2));
    const double fV = -1 / (gasConstant * (v + delta1 * b) * (v + delta2 * b));
    const double fB = -(f + v * fV) / b;
    phase.attraction = f;
    // -g less the logarithm of PV/(RT)
    phase.logCoefficient.constant = -std::log(pressure * (v - b) / (gasConstant * temperature_));
    phase.logCoefficient.byCovolume = -gB - D / temperature_ * fB;
    phase.logCoefficient.byRootA = -2 * phase.rootA * f / temperature_;
    return phase;
}

FugacityDerivatives PengRobinson::derivatives(const Fugacity& phase, double pressure) const {
    const double t = temperature_;
    const double rt = gasConstant * t;
    const double v = phase.volume;
    const double b = phase.covolume;
    const double D_T = phase.rootA * phase.rootA / t;
    const double DT = 2 * phase.rootA * phase.rootASlope;
    const double Di = 2 * phase.rootA; // by sqrt(a) of the compound

    const double gB = -1 / (v - b);
    const double gBV = gB * gB;
    const double gBB = -gBV;
    const double gV = -b / v * gB;
    const double gVV = 1 / (v * v) - gBV;
    const double near = 1 / (v + delta2 * b);
    const double far = 1 / (v + delta1 * b);
    const double f = phase.attraction;
    const double fV = -near * far / gasConstant;
    const double fVV = -fV * (near + far);
    const double fB = -(f + v * fV) / b;
    const double fBV = -(2 * fV + v * fVV) / b;
    const double fBB = -(2 * fB + v * fBV) / b;

    const double FnB = -gB;
    const double FBB = -gBB - D_T * fBB;
    const double FBD = -fB / t;
    const double FBV = -gBV - D_T * fBV;
    const double FD = -f / t;
    const double FDV = -fV / t;
    const double FBT = (D_T - DT) / t * fB;
    const double FDT = f / (t * t);
    const double FVV = -gVV - D_T * fVV;
    const double FVT = (D_T - DT) / t * fV;

    const double pressureByVolume = -rt * (FVV + 1 / (v * v));
    const double pressureByTemperature = pressure / t - rt * FVT;
    const CompoundNumbers pressureByMoles{rt * (1 / v + gV), -rt * FBV, -rt * FDV * Di};
    // of the two compounds' derivatives of pressure
    const double share = 1 / (rt * pressureByVolume);
    const auto& [p1, pB, pA] = pressureByMoles;

    FugacityDerivatives result;
    result.moles[0] = {1 + share * p1 * p1, FnB + share * p1 * pB, share * p1 * pA};
    result.moles[1] = {result.moles[0].byCovolume, FBB + share * pB * pB, FBD * Di + share * pB * pA};
    result.moles[2] = {result.moles[0].byRootA, result.moles[1].byRootA, 2 * FD + share * pA * pA};
    // a partial volume is the derivative of pressure to moles over -pressureByVolume
    const double byPartialVolume = pressureByTemperature / (gasConstant * pressureByVolume);
    result.logTemperature = {1 + byPartialVolume * p1, t * FBT + byPartialVolume * pB,
                             t * (FDT * Di + 2 * FD * phase.rootASlope) + byPartialVolume * pA};
    result.logTemperatureByRootASlope = t * FD * Di;
    const double byMoles = -pressure * share;
    result.logPressure = {byMoles * p1 - 1, byMoles * pB, byMoles * pA};
    return result;
}

CompoundNumbers PengRobinson::byMoles(const FugacityDerivatives& derivatives, std::size_t i) const {
    const auto& [one, b, root] = derivatives.moles;
    return {of(one, i), of(b, i), of(root, i)};
}

std::array<CompoundNumbers, 3> sum(const std::array<CompoundNumbers, 3>& one, double oneWeight,
                                   const std::array<CompoundNumbers, 3>& other, double otherWeight) {
    std::array<CompoundNumbers, 3> result;
    for (std::size_t k = 0; k < result.size(); ++k) {
        for (double CompoundNumbers::* part :
             {&CompoundNumbers::constant, &CompoundNumbers::byCovolume, &CompoundNumbers::byRootA})
            result[k].*part = oneWeight * (one[k].*part) + otherWeight * (other[k].*part);
    }
    return result;
}

WilsonVolatility::WilsonVolatility(const Compound& compound) {
    const double slope = 5.373 * (1 + compound.acentricFactor);
    atInfinity_ = std::log(compound.criticalPressure) + slope;
    fall_ = slope * compound.criticalTemperature;
}

} // namespace solvane::host
