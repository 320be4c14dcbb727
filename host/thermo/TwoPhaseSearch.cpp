#include "TwoPhaseSearch.h"

#include "RachfordRice.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

constexpr int fewSubstitutions = 2; // after a start with little
constexpr double convergedResidual = 1e-11;
constexpr double leastAmount = 1e-14;

} // namespace

TwoPhaseSearch::TwoPhaseSearch(const Mixture& mixture, const PengRobinson& equation,
                               GibbsMinimizer& minimizer)
    : mixture_(mixture), equation_(equation), minimizer_(minimizer), logRatios_(mixture.count()) {
    rootComposition_.reserve(mixture.count());
    for (const double fraction : mixture.composition)
        rootComposition_.push_back(std::sqrt(fraction));
    for (Part* part : {&trial_, &rest_}) {
        part->logAmounts.resize(mixture.count());
        part->composition.resize(mixture.count());
    }
}

std::optional<std::vector<PhaseState>> TwoPhaseSearch::run(const Conditions& conditions,
                                                           std::span<const double> ratios) {
    trial_.root = conditions.trialRoot;
    rest_.root = conditions.restRoot;
    pressure_ = conditions.pressure;
    logFugacity_ = &conditions.logFugacity;
    if (startWithRatios(ratios)) {
        if (auto phases = minimize(0))
            return phases;
    }
    // Close to a critical point, or beside two liquids, only the slower way leads to a vapour and a liquid.
    startWithLittle(ratios);
    return minimize(fewSubstitutions);
}

/// Takes the amounts that the ratios give. False if there are none, or if they raise the Gibbs energy.
bool TwoPhaseSearch::startWithRatios(std::span<const double> ratios) {
    const std::optional<double> fraction = phaseFraction(mixture_.composition, ratios);
    if (!fraction)
        return false;
    for (std::size_t i = 0; i < mixture_.count(); ++i)
        logRatios_[i] = std::log(*fraction / (1 - *fraction) * ratios[i]);
    evaluate(logRatios_, started_);
    return started_.value < 0;
}

/// A small enough amount of a phase from below the tangent plane lowers the Gibbs energy.
void TwoPhaseSearch::startWithLittle(std::span<const double> ratios) {
    double part = 0.5 / std::ranges::max(ratios);
    double total = 0;
    for (std::size_t i = 0; i < mixture_.count(); ++i)
        total += mixture_.composition[i] * ratios[i];
    part = std::min(part, 0.5 / total);
    do {
        for (std::size_t i = 0; i < mixture_.count(); ++i)
            logRatios_[i] = std::log(part * ratios[i] / (1 - part * ratios[i]));
        part /= 4;
        evaluate(logRatios_, started_);
    } while (started_.value >= 0 && part * total > leastAmount);
}

std::optional<std::vector<PhaseState>> TwoPhaseSearch::minimize(int substitutions) {
    const NewtonOutcome outcome = minimizer_.run(*this, substitutions, logRatios_);
    if (outcome.worstResidual > convergedResidual || outcome.value > 0)
        return std::nullopt;
    return phases();
}

/// The Gibbs energy over RT of the two phases less that of the mixture.
void TwoPhaseSearch::evaluate(std::span<const double> logRatios, GibbsModel& model) {
    divide(logRatios, model);
    for (Part* part : {&trial_, &rest_})
        part->fugacity = equation_.fugacity(part->root, pressure_, part->composition);
    const double trialLog = std::log(trial_.total);
    const double restLog = std::log(rest_.total);
    model.value = 0;
    for (std::size_t i = 0; i < mixture_.count(); ++i) {
        const double inTrial =
            trial_.logAmounts[i] - trialLog + equation_.of(trial_.fugacity.logCoefficient, i);
        const double inRest = rest_.logAmounts[i] - restLog + equation_.of(rest_.fugacity.logCoefficient, i);
        const double inMixture = (*logFugacity_)[i];
        model.residual[i] = inTrial - inRest;
        model.value += trial_.total * trial_.composition[i] * (inTrial - inMixture) +
                       rest_.total * rest_.composition[i] * (inRest - inMixture);
    }
}

/// The amounts of both phases and their compositions.
void TwoPhaseSearch::divide(std::span<const double> logRatios, GibbsModel& model) {
    const std::size_t n = mixture_.count();
    model.residual.resize(n);
    model.scale.resize(n);
    trial_.total = rest_.total = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double distance = std::abs(logRatios[i]);
        Part& major = logRatios[i] > 0 ? trial_ : rest_;
        Part& minor = logRatios[i] > 0 ? rest_ : trial_;
        const double root = std::exp(-distance / 2);
        const double ratio = root * root;
        major.composition[i] = mixture_.composition[i] / (1 + ratio);
        minor.composition[i] = major.composition[i] * ratio;
        major.logAmounts[i] = mixture_.logComposition[i] - std::log1p(ratio);
        minor.logAmounts[i] = major.logAmounts[i] - distance;
        model.scale[i] = rootComposition_[i] * root / (1 + ratio);
        trial_.total += trial_.composition[i];
        rest_.total += rest_.composition[i];
    }
    for (Part* part : {&trial_, &rest_})
        std::ranges::for_each(part->composition, [part](double& fraction) { fraction /= part->total; });
}

void TwoPhaseSearch::addCurvature(GibbsModel& model) {
    const std::size_t n = mixture_.count();
    FugacityDerivatives both = equation_.derivatives(trial_.fugacity, pressure_);
    both.moles = sum(both.moles, 1 / trial_.total, equation_.derivatives(rest_.fugacity, pressure_).moles,
                     1 / rest_.total);
    both.moles[0].constant -= 1 / trial_.total + 1 / rest_.total; // of the ideal mixture
    model.curvature.resize(n * n);
    for (std::size_t i = 0; i < n; ++i) {
        const CompoundNumbers row = equation_.byMoles(both, i);
        for (std::size_t j = 0; j <= i; ++j)
            model.curvature[i * n + j] = model.scale[i] * model.scale[j] * equation_.of(row, j);
        model.curvature[i * n + i] += 1;
    }
}

/// Which of the two is the vapour. Nothing if one of them has vanished or both are liquids.
std::optional<std::vector<PhaseState>> TwoPhaseSearch::phases() const {
    const auto ratio = [](const Part& part) { return part.fugacity.volume / part.fugacity.covolume; };
    const bool trialIsVapor = ratio(trial_) > ratio(rest_);
    const Part& vapor = trialIsVapor ? trial_ : rest_;
    const Part& liquid = trialIsVapor ? rest_ : trial_;
    if (trial_.total < leastAmount || rest_.total < leastAmount || ratio(vapor) < leastVaporVolumeRatio)
        return std::nullopt;
    std::vector<PhaseState> result;
    result.reserve(2);
    result.push_back({Phase::vapor, vapor.total, vapor.composition});
    result.push_back({Phase::liquid, liquid.total, liquid.composition});
    return result;
}

} // namespace solvane::host
