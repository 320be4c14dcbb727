#include "Stability.h"

#include "NewtonMinimum.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace solvane::host {

namespace {

constexpr int substitutions = 4;

/// Bounds of what rounding leaves of a distance that is zero, and of a phase that is the mixture itself: one
/// so alike (differences of ln amounts) cannot lie measurably below the plane.
constexpr double noDistance = -1e-13;
constexpr double noDifference = 1e-4;

std::vector<double> fractionsOf(std::span<const double> logAmounts, double& total) {
    std::vector<double> result(logAmounts.size());
    std::ranges::transform(logAmounts, result.begin(), [](double amount) { return std::exp(amount); });
    total = std::accumulate(result.begin(), result.end(), 0.0);
    for (double& fraction : result)
        fraction /= total;
    return result;
}

/// ln amounts of the trial phase by Wilson's correlation.
std::vector<double> wilsonAmounts(std::span<const Compound* const> compounds, Root root, double temperature,
                                  double pressure, std::span<const double> composition) {
    std::vector<double> logAmounts(composition.size());
    for (std::size_t i = 0; i < composition.size(); ++i) {
        const double logK = wilsonLogVolatility(*compounds[i], temperature) - std::log(pressure);
        logAmounts[i] = std::log(composition[i]) + (root == Root::vapor ? logK : -logK);
    }
    // Far from saturation the estimate may be off by hundreds of orders of magnitude; the amount of the trial
    // phase is free, only its composition matters.
    const double most = std::ranges::max(logAmounts);
    for (double& amount : logAmounts)
        amount -= most;
    return logAmounts;
}

/// The distance from the tangent plane of `logFugacity`.
GibbsModel tangentDistance(const PengRobinson& equation, Root root, double pressure,
                           std::span<const double> logFugacity, std::span<const double> logAmounts) {
    const std::size_t n = logAmounts.size();
    double total = 0;
    const std::vector<double> trial = fractionsOf(logAmounts, total);
    FugacityDerivatives derivatives;
    const Fugacity fugacity = equation.fugacity(root, pressure, trial, &derivatives);
    GibbsModel model{1, std::vector<double>(n), std::vector<double>(n), std::move(derivatives.moles)};
    for (std::size_t i = 0; i < n; ++i) {
        model.residual[i] = logAmounts[i] + fugacity.logCoefficient[i] - logFugacity[i];
        model.value += trial[i] * total * (model.residual[i] - 1);
        model.scale[i] = std::exp(logAmounts[i] / 2);
    }
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j)
            model.curvature[i * n + j] *= model.scale[i] * model.scale[j] / total;
        model.curvature[i * n + i] += 1;
    }
    return model;
}

} // namespace

TrialPhase tryPhase(const PengRobinson& equation, std::span<const Compound* const> compounds, Root root,
                    double pressure, std::span<const double> composition,
                    std::span<const double> logFugacity) {
    std::vector<double> logAmounts =
        wilsonAmounts(compounds, root, equation.temperature(), pressure, composition);
    const NewtonOutcome outcome = minimizeGibbs(
        [&](std::span<const double> at) {
            return tangentDistance(equation, root, pressure, logFugacity, at);
        },
        substitutions, logAmounts);
    double difference = 0;
    for (std::size_t i = 0; i < composition.size(); ++i)
        difference = std::max(difference, std::abs(logAmounts[i] - std::log(composition[i])));
    double total = 0;
    return {outcome.value < noDistance && difference > noDifference, fractionsOf(logAmounts, total)};
}

} // namespace solvane::host
