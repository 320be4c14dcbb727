#include "Stability.h"

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

/// A trial phase this far below the plane, and this near to its deepest point, is good enough.
constexpr double clearlyBelow = -1e-3;
constexpr double nearResidual = 0.1;

} // namespace

TrialPhase::TrialPhase(const Mixture& mixture, const PengRobinson& equation, GibbsMinimizer& minimizer)
    : mixture_(mixture),
      equation_(equation),
      minimizer_(minimizer),
      logAmounts_(mixture.count()),
      composition_(mixture.count()) {}

bool TrialPhase::isBelowPlane(Root root, double pressure, const std::vector<double>& logFugacity) {
    root_ = root;
    pressure_ = pressure;
    logFugacity_ = &logFugacity;
    isMixture_ = false;
    start();
    const NewtonOutcome outcome = minimizer_.run(*this, substitutions, logAmounts_);
    double difference = 0;
    for (std::size_t i = 0; i < mixture_.count(); ++i)
        difference = std::max(difference, std::abs(logAmounts_[i] - mixture_.logComposition[i]));
    return outcome.value < noDistance && difference > noDifference && !isMixture_;
}

const std::vector<double>& TrialPhase::ratios() {
    ratios_.resize(mixture_.count());
    for (std::size_t i = 0; i < mixture_.count(); ++i)
        ratios_[i] = total_ * composition_[i] / mixture_.composition[i];
    return ratios_;
}

/// ln amounts of the trial phase by Wilson's correlation.
void TrialPhase::start() {
    const double logPressure = std::log(pressure_);
    for (std::size_t i = 0; i < mixture_.count(); ++i) {
        const double logK = mixture_.volatilities[i].logarithm(equation_.temperature()) - logPressure;
        logAmounts_[i] = mixture_.logComposition[i] + (root_ == Root::vapor ? logK : -logK);
    }
    // Far from saturation the estimate may be off by hundreds of orders of magnitude; the amount of the trial
    // phase is free, only its composition matters.
    const double most = std::ranges::max(logAmounts_);
    for (double& amount : logAmounts_)
        amount -= most;
}

/// The distance from the tangent plane.
void TrialPhase::evaluate(std::span<const double> logAmounts, GibbsModel& model) {
    const std::size_t n = logAmounts.size();
    model.residual.resize(n);
    model.scale.resize(n);
    total_ = 0;
    for (std::size_t i = 0; i < n; ++i) {
        model.scale[i] = std::exp(logAmounts[i] / 2);
        composition_[i] = model.scale[i] * model.scale[i];
        total_ += composition_[i];
    }
    for (double& fraction : composition_)
        fraction /= total_;
    fugacity_ = equation_.fugacity(root_, pressure_, composition_);
    model.value = 1;
    for (std::size_t i = 0; i < n; ++i) {
        model.residual[i] = logAmounts[i] + equation_.of(fugacity_.logCoefficient, i) - (*logFugacity_)[i];
        model.value += composition_[i] * total_ * (model.residual[i] - 1);
    }
}

/// Whether the rest of the way down can be foretold: the phase lies below the plane already, or its distance
/// cannot fall to 0 any more, or the next step leads to the mixture itself.
bool TrialPhase::isDecided(const GibbsModel& model, std::span<const double> logAmounts,
                           const GibbsStep& next) {
    const auto isNear = [](double residual) { return std::abs(residual) < nearResidual; };
    if (model.value < clearlyBelow && std::ranges::all_of(model.residual, isNear))
        return true;
    if (!next.isNewton)
        return false;
    constexpr double safety = 20;
    if (model.value + safety * next.change / 2 > 0)
        return true;
    double difference = 0;
    for (std::size_t i = 0; i < logAmounts.size(); ++i) {
        const double amount = logAmounts[i] + next.variables[i];
        difference = std::max(difference, std::abs(amount - mixture_.logComposition[i]));
    }
    isMixture_ = difference < noDifference / 10;
    return isMixture_;
}

void TrialPhase::addCurvature(GibbsModel& model) {
    const std::size_t n = composition_.size();
    const FugacityDerivatives derivatives = equation_.derivatives(fugacity_, pressure_);
    model.curvature.resize(n * n);
    for (std::size_t i = 0; i < n; ++i) {
        const CompoundNumbers row = equation_.byMoles(derivatives, i);
        for (std::size_t j = 0; j <= i; ++j)
            model.curvature[i * n + j] = model.scale[i] * model.scale[j] / total_ * equation_.of(row, j);
        model.curvature[i * n + i] += 1;
    }
}

} // namespace solvane::host
