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

} // namespace

TrialPhase tryPhase(const PengRobinson& equation, std::span<const Compound* const> compounds, Root root,
                    double pressure, std::span<const double> composition,
                    std::span<const double> logFugacity) {
    const std::size_t n = composition.size();
    std::vector<double> logAmounts(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double logK = wilsonLogVolatility(*compounds[i], equation.temperature()) - std::log(pressure);
        logAmounts[i] = std::log(composition[i]) + (root == Root::vapor ? logK : -logK);
    }

    const auto fractions = [n](std::span<const double> logs, double& total) {
        std::vector<double> result(n);
        for (std::size_t i = 0; i < n; ++i)
            result[i] = std::exp(logs[i]);
        total = std::accumulate(result.begin(), result.end(), 0.0);
        for (double& fraction : result)
            fraction /= total;
        return result;
    };

    // Wilson's estimate far from saturation may be off by hundreds of orders of magnitude; the amount of the
    // trial phase is free, only its composition matters.
    const double most = *std::max_element(logAmounts.begin(), logAmounts.end());
    for (double& amount : logAmounts)
        amount -= most;

    const GibbsObjective distance = [&](std::span<const double> logs) {
        double total = 0;
        const std::vector<double> trial = fractions(logs, total);
        FugacityDerivatives derivatives;
        const Fugacity fugacity = equation.fugacity(root, pressure, trial, &derivatives);
        GibbsModel model{1, std::vector<double>(n), std::vector<double>(n), std::move(derivatives.moles)};
        for (std::size_t i = 0; i < n; ++i) {
            model.residual[i] = logs[i] + fugacity.logCoefficient[i] - logFugacity[i];
            model.value += trial[i] * total * (model.residual[i] - 1);
            model.scale[i] = std::exp(logs[i] / 2);
        }
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j < n; ++j)
                model.curvature[i * n + j] *= model.scale[i] * model.scale[j] / total;
            model.curvature[i * n + i] += 1;
        }
        return model;
    };

    const NewtonOutcome outcome = minimizeGibbs(distance, substitutions, logAmounts);
    double difference = 0;
    for (std::size_t i = 0; i < n; ++i)
        difference = std::max(difference, std::abs(logAmounts[i] - std::log(composition[i])));
    double total = 0;
    return {outcome.value < noDistance && difference > noDifference, fractions(logAmounts, total)};
}

} // namespace solvane::host
