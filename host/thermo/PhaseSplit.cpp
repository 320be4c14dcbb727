#include "PhaseSplit.h"

#include "NewtonMinimum.h"
#include "Stability.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>
#include <utility>

namespace solvane::host {

namespace {

constexpr int substitutions = 2;
constexpr double convergedResidual = 1e-11;
constexpr double leastAmount = 1e-14;

struct PhaseAmounts {
    std::vector<double> logAmounts;
    std::vector<double> composition;
    double total = 0;

    void normalize() {
        composition.resize(logAmounts.size());
        std::ranges::transform(logAmounts, composition.begin(),
                               [](double amount) { return std::exp(amount); });
        total = std::accumulate(composition.begin(), composition.end(), 0.0);
        for (double& fraction : composition)
            fraction /= total;
    }
};

/// The mixture parted into two by the variables ln(trial amount / rest's amount) of each compound.
struct Partition {
    PhaseAmounts trial;
    PhaseAmounts rest;

    Partition(std::span<const double> composition, std::span<const double> logRatios) {
        for (std::size_t i = 0; i < composition.size(); ++i) {
            const double all = std::log(composition[i]);
            const double ratio = logRatios[i];
            const double major = -std::log1p(std::exp(-std::abs(ratio)));
            const double minor = major - std::abs(ratio);
            trial.logAmounts.push_back(all + (ratio > 0 ? major : minor));
            rest.logAmounts.push_back(all + (ratio > 0 ? minor : major));
        }
        trial.normalize();
        rest.normalize();
    }
};

/// Seeks the two phases of least Gibbs energy, each on its root. Nothing where they turn out to be one phase,
/// or two liquids.
std::optional<std::vector<PhaseState>> partition(const PengRobinson& equation, const Mixture& mixture,
                                                 double pressure, Root trialRoot, Root restRoot,
                                                 const TrialPhase& start,
                                                 std::span<const double> logFugacity) {
    const std::vector<double>& z = mixture.composition;
    const std::size_t n = z.size();

    const GibbsObjective gibbs = [&](std::span<const double> logRatios) {
        const Partition parts(z, logRatios);
        FugacityDerivatives trialDerivatives;
        FugacityDerivatives restDerivatives;
        const Fugacity trial =
            equation.fugacity(trialRoot, pressure, parts.trial.composition, &trialDerivatives);
        const Fugacity rest = equation.fugacity(restRoot, pressure, parts.rest.composition, &restDerivatives);
        GibbsModel model{0, std::vector<double>(n), std::vector<double>(n), std::vector<double>(n * n)};
        const double trialLog = std::log(parts.trial.total);
        const double restLog = std::log(parts.rest.total);
        for (std::size_t i = 0; i < n; ++i) {
            const double inTrial = parts.trial.logAmounts[i];
            const double inRest = parts.rest.logAmounts[i];
            const double trialPotential = inTrial - trialLog + trial.logCoefficient[i];
            const double restPotential = inRest - restLog + rest.logCoefficient[i];
            model.residual[i] = trialPotential - restPotential;
            model.value += std::exp(inTrial) * (trialPotential - logFugacity[i]) +
                           std::exp(inRest) * (restPotential - logFugacity[i]);
            model.scale[i] = std::exp((inTrial + inRest - std::log(z[i])) / 2);
        }
        const double ideal = 1 / parts.trial.total + 1 / parts.rest.total;
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j < n; ++j)
                model.curvature[i * n + j] = model.scale[i] * model.scale[j] *
                                             (trialDerivatives.moles[i * n + j] / parts.trial.total +
                                              restDerivatives.moles[i * n + j] / parts.rest.total - ideal);
            model.curvature[i * n + i] += 1;
        }
        return model;
    };

    // A small enough amount of a phase from below the tangent plane lowers the Gibbs energy.
    double amount = 0.5;
    for (std::size_t i = 0; i < n; ++i)
        amount = std::min(amount, 0.5 * z[i] / start.composition[i]);
    std::vector<double> logRatios(n);
    do {
        for (std::size_t i = 0; i < n; ++i) {
            const double formed = amount * start.composition[i];
            logRatios[i] = std::log(formed / (z[i] - formed));
        }
        amount /= 4;
    } while (gibbs(logRatios).value >= 0 && amount > leastAmount);

    const NewtonOutcome outcome = minimizeGibbs(gibbs, substitutions, logRatios);
    const Partition parts(z, logRatios);
    const Fugacity trial = equation.fugacity(trialRoot, pressure, parts.trial.composition);
    const Fugacity rest = equation.fugacity(restRoot, pressure, parts.rest.composition);
    const bool trialIsVapor = trial.volume / trial.covolume > rest.volume / rest.covolume;
    const Fugacity& vapor = trialIsVapor ? trial : rest;
    if (outcome.worstResidual > convergedResidual || outcome.value > 0 || parts.trial.total < leastAmount ||
        parts.rest.total < leastAmount || vapor.volume < leastVaporVolumeRatio * vapor.covolume)
        return std::nullopt;
    const PhaseAmounts& light = trialIsVapor ? parts.trial : parts.rest;
    const PhaseAmounts& heavy = trialIsVapor ? parts.rest : parts.trial;
    return std::vector<PhaseState>{{Phase::vapor, light.total, light.composition},
                                   {Phase::liquid, heavy.total, heavy.composition}};
}

} // namespace

std::vector<PhaseState> splitPhases(const Mixture& mixture, double temperature, double pressure) {
    const PengRobinson equation(mixture.compounds, temperature);
    const std::vector<double>& z = mixture.composition;
    const Fugacity feed = equation.fugacity(Root::stable, pressure, z);
    const bool vaporLike = feed.isVaporLike();
    const Root ownRoot = vaporLike ? Root::vapor : Root::liquid;
    if (z.size() > 1) {
        std::vector<double> logFugacity = feed.logCoefficient;
        for (std::size_t i = 0; i < z.size(); ++i)
            logFugacity[i] += std::log(z[i]);
        // The trial on the other side than the mixture's own comes first: it is the one that finds a vapour
        // beside a liquid.
        const std::array trials{vaporLike ? Root::liquid : Root::vapor, ownRoot};
        for (Root root : trials) {
            const TrialPhase trial = tryPhase(equation, mixture.compounds, root, pressure, z, logFugacity);
            if (!trial.belowPlane)
                continue;
            // The rest starts as the mixture on its own root and stays there, lest it turn to a second
            // liquid.
            const Root restRoot = root == ownRoot ? Root::stable : ownRoot;
            if (auto phases = partition(equation, mixture, pressure, root, restRoot, trial, logFugacity))
                return *std::move(phases);
        }
    }
    return {{vaporLike ? Phase::vapor : Phase::liquid, 1, z}};
}

} // namespace solvane::host
