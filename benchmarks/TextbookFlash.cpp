#include "TextbookFlash.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace solvane {

namespace {

constexpr double gasConstant = 8.314462618;
constexpr double referenceTemperature = 298.15;
constexpr double referencePressure = 101325;
const double root2 = std::numbers::sqrt2;

/// The real roots of the monic cubic by Cardano's and Viete's formulas: the least and the greatest.
std::pair<double, double> outerRoots(double c2, double c1, double c0) {
    const double q = (c2 * c2 - 3 * c1) / 9;
    const double r = (2 * c2 * c2 * c2 - 9 * c2 * c1 + 27 * c0) / 54;
    if (r * r < q * q * q) {
        const double angle = std::acos(r / std::sqrt(q * q * q));
        const auto root = [&](double turn) {
            return -2 * std::sqrt(q) * std::cos((angle + turn * 2 * std::numbers::pi) / 3) - c2 / 3;
        };
        const auto [least, greatest] = std::minmax({root(0), root(1), root(-1)});
        return {least, greatest};
    }
    const double s = -std::copysign(std::cbrt(std::abs(r) + std::sqrt(r * r - q * q * q)), r);
    const double only = s + (s == 0 ? 0 : q / s) - c2 / 3;
    return {only, only};
}

double distance(const TextbookFlash::Property& property, const TextbookFlash::State& state, double value) {
    return property(state) - value;
}

/// Illinois' method between two states.
TextbookFlash::State search(const std::function<TextbookFlash::State(double)>& at,
                            const TextbookFlash::Property& property, double value, double low, double high) {
    double lowMiss = distance(property, at(low), value);
    double highMiss = distance(property, at(high), value);
    int side = 0;
    for (;;) {
        const double place = (low * highMiss - high * lowMiss) / (highMiss - lowMiss);
        TextbookFlash::State state = at(place);
        const double miss = distance(property, state, value);
        if (std::abs(miss) <= 1e-10 * std::max(1.0, std::abs(value)) || high - low <= 1e-12 * high)
            return state;
        if ((miss > 0) == (highMiss > 0)) {
            high = place;
            highMiss = miss;
            lowMiss /= side == 1 ? 2 : 1;
            side = 1;
        } else {
            low = place;
            lowMiss = miss;
            highMiss /= side == -1 ? 2 : 1;
            side = -1;
        }
    }
}

} // namespace

TextbookFlash::Phase TextbookFlash::phase(double temperature, double pressure, const std::vector<double>& x,
                                          bool isVapor) const {
    const std::size_t n = x.size();
    std::vector<double> a(n), aSlope(n), b(n);
    for (std::size_t i = 0; i < n; ++i) {
        const host::Compound& compound = *compounds_[i];
        const double tc = compound.criticalTemperature;
        const double w = compound.acentricFactor;
        const double m = 0.37464 + 1.54226 * w - 0.26992 * w * w;
        const double root = 1 + m * (1 - std::sqrt(temperature / tc));
        const double critical =
            0.45723552892138219 * std::pow(gasConstant * tc, 2) / compound.criticalPressure;
        a[i] = critical * root * root;
        aSlope[i] = -critical * root * m / std::sqrt(temperature * tc);
        b[i] = 0.077796073903888455 * gasConstant * tc / compound.criticalPressure;
    }
    Phase result{0, 0, 0, 0, std::vector<double>(n)};
    std::vector<double> aSum(n);
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
            const double mixed = std::sqrt(a[i] * a[j]);
            aSum[i] += x[j] * mixed;
            result.aSlope += x[i] * x[j] * mixed * (aSlope[i] / a[i] + aSlope[j] / a[j]) / 2;
        }
        result.a += x[i] * aSum[i];
        result.b += x[i] * b[i];
    }
    const double rt = gasConstant * temperature;
    const double A = result.a * pressure / (rt * rt);
    const double B = result.b * pressure / rt;
    const auto [least, greatest] = outerRoots(B - 1, A - 3 * B * B - 2 * B, -(A * B - B * B - B * B * B));
    result.z = isVapor || least <= B ? greatest : least;
    const double z = result.z;
    for (std::size_t i = 0; i < n; ++i) {
        const double share = b[i] / result.b;
        result.logCoefficients[i] = share * (z - 1) - std::log(z - B) -
                                    A / (2 * root2 * B) * (2 * aSum[i] / result.a - share) *
                                        std::log((z + (1 + root2) * B) / (z + (1 - root2) * B));
    }
    return result;
}

/// Bisects the equation of Rachford and Rice; below 0 and above 1 for one phase.
double TextbookFlash::phaseFraction(const std::vector<double>& k) const {
    const auto excess = [&](double fraction) {
        double sum = 0;
        for (std::size_t i = 0; i < k.size(); ++i)
            sum += composition_[i] * (k[i] - 1) / (1 + fraction * (k[i] - 1));
        return sum;
    };
    if (excess(0) <= 0)
        return -1;
    if (excess(1) >= 0)
        return 2;
    double low = 0, high = 1;
    while (high - low > 1e-14)
        (excess((low + high) / 2) > 0 ? low : high) = (low + high) / 2;
    return (low + high) / 2;
}

TextbookFlash::State TextbookFlash::atTemperatureAndPressure(double temperature, double pressure) const {
    const std::size_t n = composition_.size();
    std::vector<double> k(n);
    for (std::size_t i = 0; i < n; ++i) {
        const host::Compound& compound = *compounds_[i];
        k[i] = compound.criticalPressure / pressure *
               std::exp(5.373 * (1 + compound.acentricFactor) *
                        (1 - compound.criticalTemperature / temperature));
    }
    State state{temperature, pressure, 0, std::vector<double>(n), std::vector<double>(n)};
    for (int iteration = 0; iteration < 1000; ++iteration) {
        state.vaporFraction = std::clamp(phaseFraction(k), 0.0, 1.0);
        double vaporTotal = 0, liquidTotal = 0;
        for (std::size_t i = 0; i < n; ++i) {
            state.liquid[i] = composition_[i] / (1 + state.vaporFraction * (k[i] - 1));
            state.vapor[i] = k[i] * state.liquid[i];
            liquidTotal += state.liquid[i];
            vaporTotal += state.vapor[i];
        }
        for (std::size_t i = 0; i < n; ++i) {
            state.liquid[i] /= liquidTotal;
            state.vapor[i] /= vaporTotal;
        }
        const Phase vapor = phase(temperature, pressure, state.vapor, true);
        const Phase liquid = phase(temperature, pressure, state.liquid, false);
        double change = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const double next = std::exp(liquid.logCoefficients[i] - vapor.logCoefficients[i]);
            change = std::max(change, std::abs(next / k[i] - 1));
            k[i] = next;
        }
        if (change < 1e-12)
            break;
    }
    return state;
}

TextbookFlash::State TextbookFlash::atPressure(double pressure, const Property& property, double value,
                                               double lowest, double highest) const {
    return search([&](double temperature) { return atTemperatureAndPressure(temperature, pressure); },
                  property, value, lowest, highest);
}

TextbookFlash::State TextbookFlash::atTemperature(double temperature, const Property& property, double value,
                                                  double lowest, double highest) const {
    return search([&](double pressure) { return atTemperatureAndPressure(temperature, pressure); }, property,
                  value, lowest, highest);
}

double TextbookFlash::enthalpy(const State& state) const {
    const double t = state.temperature;
    double sum = 0;
    for (std::size_t i = 0; i < composition_.size(); ++i) {
        const auto& c = compounds_[i]->idealGasHeatCapacity;
        for (int power = 1; power <= 4; ++power)
            sum += composition_[i] * c[static_cast<std::size_t>(power - 1)] / power *
                   (std::pow(t, power) - std::pow(referenceTemperature, power));
    }
    for (const bool isVapor : {true, false}) {
        const double share = isVapor ? state.vaporFraction : 1 - state.vaporFraction;
        const Phase p = phase(t, state.pressure, isVapor ? state.vapor : state.liquid, isVapor);
        const double B = p.b * state.pressure / (gasConstant * t);
        sum += share * (gasConstant * t * (p.z - 1) +
                        (t * p.aSlope - p.a) / (2 * root2 * p.b) *
                            std::log((p.z + (1 + root2) * B) / (p.z + (1 - root2) * B)));
    }
    return sum;
}

double TextbookFlash::entropy(const State& state) const {
    const double t = state.temperature;
    double sum = -gasConstant * std::log(state.pressure / referencePressure);
    for (std::size_t i = 0; i < composition_.size(); ++i) {
        const auto& c = compounds_[i]->idealGasHeatCapacity;
        sum += composition_[i] * c[0] * std::log(t / referenceTemperature);
        for (int power = 1; power <= 3; ++power)
            sum += composition_[i] * c[static_cast<std::size_t>(power)] / power *
                   (std::pow(t, power) - std::pow(referenceTemperature, power));
    }
    for (const bool isVapor : {true, false}) {
        const double share = isVapor ? state.vaporFraction : 1 - state.vaporFraction;
        const std::vector<double>& x = isVapor ? state.vapor : state.liquid;
        const Phase p = phase(t, state.pressure, x, isVapor);
        const double B = p.b * state.pressure / (gasConstant * t);
        double mixing = 0;
        for (const double fraction : x)
            mixing -= gasConstant * fraction * std::log(fraction);
        sum += share *
               (mixing + gasConstant * std::log(p.z - B) +
                p.aSlope / (2 * root2 * p.b) * std::log((p.z + (1 + root2) * B) / (p.z + (1 - root2) * B)));
    }
    return sum;
}

} // namespace solvane
