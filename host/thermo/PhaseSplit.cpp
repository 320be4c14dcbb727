#include "PhaseSplit.h"

#include "NewtonMinimum.h"
#include "Stability.h"

#include <algorithm>
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

/// The mixture divided in two by the variables ln(trial amount / rest's amount) of each compound.
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

/// The search for the two phases of least Gibbs energy, each on its root of the equation.
struct TwoPhaseSearch {
    const PengRobinson& equation;
    const std::vector<double>& mixture; ///< its composition
    double pressure;
    Root trialRoot;
    Root restRoot;
    std::span<const double> logFugacity; ///< of the mixture as one phase

    GibbsModel gibbs(std::span<const double> logRatios) const;
    std::vector<double> start(const TrialPhase& trial) const;
    std::optional<std::vector<PhaseState>> phases(const Partition& parts) const;

    /// Nothing if the two turn out to be one phase, or two liquids.
    std::optional<std::vector<PhaseState>> run(const TrialPhase& trial) const {
        std::vector<double> logRatios = start(trial);
        const NewtonOutcome outcome =
            minimizeGibbs([this](std::span<const double> at) { return gibbs(at); }, substitutions, logRatios);
        if (outcome.worstResidual > convergedResidual || outcome.value > 0)
            return std::nullopt;
        return phases(Partition(mixture, logRatios));
    }
};

/// The Gibbs energy over RT of the two phases less that of the mixture.
GibbsModel TwoPhaseSearch::gibbs(std::span<const double> logRatios) const {
    const std::size_t n = mixture.size();
    const Partition parts(mixture, logRatios);
    FugacityDerivatives trialDerivatives;
    FugacityDerivatives restDerivatives;
    const Fugacity trial = equation.fugacity(trialRoot, pressure, parts.trial.composition, &trialDerivatives);
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
        model.scale[i] = std::exp((inTrial + inRest - std::log(mixture[i])) / 2);
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
}

/// A small enough amount of a phase from below the tangent plane lowers the Gibbs energy.
std::vector<double> TwoPhaseSearch::start(const TrialPhase& trial) const {
    double amount = 0.5;
    for (std::size_t i = 0; i < mixture.size(); ++i)
        amount = std::min(amount, 0.5 * mixture[i] / trial.composition[i]);
    std::vector<double> logRatios(mixture.size());
    do {
        for (std::size_t i = 0; i < mixture.size(); ++i) {
            const double formed = amount * trial.composition[i];
            logRatios[i] = std::log(formed / (mixture[i] - formed));
        }
        amount /= 4;
    } while (gibbs(logRatios).value >= 0 && amount > leastAmount);
    return logRatios;
}

/// Which of the two is the vapour. Nothing if one of them has vanished or both are liquids.
std::optional<std::vector<PhaseState>> TwoPhaseSearch::phases(const Partition& parts) const {
    const Fugacity trial = equation.fugacity(trialRoot, pressure, parts.trial.composition);
    const Fugacity rest = equation.fugacity(restRoot, pressure, parts.rest.composition);
    const bool trialIsVapor = trial.volume / trial.covolume > rest.volume / rest.covolume;
    const Fugacity& vapor = trialIsVapor ? trial : rest;
    if (parts.trial.total < leastAmount || parts.rest.total < leastAmount ||
        vapor.volume < leastVaporVolumeRatio * vapor.covolume)
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
    std::vector<PhaseState> onePhase{{vaporLike ? Phase::vapor : Phase::liquid, 1, z}};
    if (z.size() == 1)
        return onePhase;

    std::vector<double> logFugacity = feed.logCoefficient;
    for (std::size_t i = 0; i < z.size(); ++i)
        logFugacity[i] += std::log(z[i]);
    const Root ownRoot = vaporLike ? Root::vapor : Root::liquid;
    // The trial on the other side than the mixture's own comes first: it finds a vapour beside a liquid.
    for (const Root root : {vaporLike ? Root::liquid : Root::vapor, ownRoot}) {
        const TrialPhase trial = tryPhase(equation, mixture.compounds, root, pressure, z, logFugacity);
        if (!trial.belowPlane)
            continue;
        // The rest starts as the mixture on its own root and stays there, or it may turn to a second liquid.
        const Root restRoot = root == ownRoot ? Root::stable : ownRoot;
        if (auto phases = TwoPhaseSearch{equation, z, pressure, root, restRoot, logFugacity}.run(trial))
            return *std::move(phases);
    }
    return onePhase;
}

} // namespace solvane::host
