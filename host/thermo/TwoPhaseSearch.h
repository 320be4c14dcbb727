/// The search for the two phases of least Gibbs energy.
#pragma once

#include "Mixture.h"
#include "NewtonMinimum.h"
#include "PengRobinson.h"
#include "PropertyPackage.h"

#include <optional>

namespace solvane::host {

/// Divides a mixture in two phases, a trial phase and the rest, each on its root of the equation. Can be run
/// again and again; mixture, equation and minimizer outlive it.
class TwoPhaseSearch final : GibbsObjective {
public:
    TwoPhaseSearch(const Mixture& mixture, const PengRobinson& equation, GibbsMinimizer& minimizer);

    /// Each phase on its root of the equation, at the equation's temperature. `logFugacity` is that of the
    /// mixture as one phase.
    struct Conditions {
        Root trialRoot;
        Root restRoot;
        double pressure;
        const std::vector<double>& logFugacity;
    };

    /// Starts with a trial phase below the tangent plane; `ratios` are its amounts over the mixture's. The
    /// vapour comes first; nothing if the two turn out to be one phase, or two liquids.
    std::optional<std::vector<PhaseState>> run(const Conditions& conditions, std::span<const double> ratios);

private:
    struct Part {
        std::vector<double> logAmounts;
        std::vector<double> composition;
        double total = 0;
        Root root = Root::stable;
        Fugacity fugacity;
    };

    void evaluate(std::span<const double> logRatios, GibbsModel& model) override;
    void addCurvature(GibbsModel& model) override;
    void divide(std::span<const double> logRatios, GibbsModel& model);
    bool startWithRatios(std::span<const double> ratios);
    void startWithLittle(std::span<const double> ratios);
    std::optional<std::vector<PhaseState>> minimize(int substitutions);
    std::optional<std::vector<PhaseState>> phases() const;

    const Mixture& mixture_;
    const PengRobinson& equation_;
    GibbsMinimizer& minimizer_;
    std::vector<double> rootComposition_; ///< square roots of the mole fractions
    double pressure_ = 0;
    const std::vector<double>* logFugacity_ = nullptr;
    std::vector<double> logRatios_; ///< trial phase's amounts over the rest's
    // At the last point:
    Part trial_;
    Part rest_;
    GibbsModel started_; ///< at the start of a minimisation
};

} // namespace solvane::host
