#include "EnergyFlash.h"

#include "FlashVariables.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace solvane::host {

namespace {

struct Sample {
    Equilibrium state;
    double difference; ///< property less the value that is sought
};

/// Parts of two states of equal pressure and (but for rounding) temperature, put together.
Equilibrium blend(const Equilibrium& low, const Equilibrium& high, double highShare) {
    Equilibrium result{low.temperature, low.pressure, {}};
    for (Phase phase : {Phase::vapor, Phase::liquid}) {
        PhaseState sum{phase, 0, {}};
        for (const auto& [state, share] : {std::pair(&low, 1 - highShare), std::pair(&high, highShare)}) {
            for (const PhaseState& part : state->phases) {
                if (part.phase != phase) {
                    continue;
                }
                const double amount = share * part.fraction;
                sum.composition.resize(part.composition.size());
                for (std::size_t i = 0; i < part.composition.size(); ++i) {
                    sum.composition[i] += amount * part.composition[i];
                }
                sum.fraction += amount;
            }
        }
        if (sum.fraction > 0) {
            std::ranges::for_each(sum.composition, [&](double& fraction) { fraction /= sum.fraction; });
            result.phases.push_back(std::move(sum));
        }
    }
    return result;
}

/// Narrows [low, high], whose differences differ in sign, to neighbouring temperatures or to a state that has
/// the value: inverse quadratic interpolation where it may be trusted, else bisection (T. R. Chandrupatla,
/// Advances in Engineering Software 28 (1997) 145). A jump, as where a pure compound boils, costs bisections.
template <typename Evaluate>
void narrow(Sample& low, Sample& high, double tolerance, const Evaluate& evaluate) {
    Sample newest = low;
    Sample opposite = high;
    Sample third = high;
    double part = 0.5;
    for (int i = 0; i < 200 && std::abs(newest.difference) > tolerance; ++i) {
        const double from = newest.state.temperature;
        const double to = opposite.state.temperature;
        const double spacing = 2e-16 * std::abs(from);
        if (std::abs(to - from) <= 2 * spacing) {
            break;
        }
        Sample sample = evaluate(from + part * (to - from));
        if ((sample.difference > 0) == (newest.difference > 0)) {
            third = std::move(newest);
        } else {
            third = std::move(opposite);
            opposite = std::move(newest);
        }
        newest = std::move(sample);

        const double a = newest.state.temperature;
        const double b = opposite.state.temperature;
        const double c = third.state.temperature;
        const double fa = newest.difference;
        const double fb = opposite.difference;
        const double fc = third.difference;
        const double xi = (a - b) / (c - b);
        const double phi = (fa - fb) / (fc - fb);
        if (phi * phi < xi && (1 - phi) * (1 - phi) < 1 - xi) {
            part = fa / (fb - fa) * fc / (fb - fc) + (c - a) / (b - a) * fa / (fc - fa) * fb / (fc - fb);
        } else {
            part = 0.5;
        }
        const double least = std::min(0.5, spacing / std::abs(b - a));
        part = std::clamp(part, least, 1 - least);
    }
    const bool newestIsLow = newest.state.temperature < opposite.state.temperature;
    low = newestIsLow ? newest : opposite;
    high = newestIsLow ? std::move(opposite) : std::move(newest);
}

} // namespace

double overallProperty(const Mixture& mixture, const Equilibrium& state, double MolarProperties::*property) {
    double sum = 0;
    for (const PhaseState& phase : state.phases) {
        sum += phase.fraction * (molarProperties<double>(mixture.compounds, phase.phase, state.temperature,
                                                         state.pressure, phase.composition).*
                                 property);
    }
    return sum;
}

bool flashAtProperty(const Mixture& mixture, double pressure, double MolarProperties::*property, double value,
                     Equilibrium& result, std::string& error) {
    const auto evaluate = [&](double temperature) {
        Equilibrium state{temperature, pressure, splitPhases(mixture, temperature, pressure)};
        const double difference = overallProperty(mixture, state, property) - value;
        return Sample{std::move(state), difference};
    };

    Sample low = evaluate(lowestTemperature);
    Sample high = evaluate(highestTemperature);
    if (low.difference > 0 || high.difference < 0) {
        error = text(value, " at ", pressure, " Pa lies outside ", low.difference + value, " to ",
                     high.difference + value, ", the values from ", lowestTemperature, " K to ",
                     highestTemperature, " K");
        return false;
    }
    const double tolerance = 1e-12 * (high.difference - low.difference);
    narrow(low, high, tolerance, evaluate);
    const Sample& nearer = std::abs(low.difference) < std::abs(high.difference) ? low : high;
    result = std::abs(nearer.difference) <= tolerance
                 ? nearer.state
                 : blend(low.state, high.state, -low.difference / (high.difference - low.difference));
    return true;
}

} // namespace solvane::host
