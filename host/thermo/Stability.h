/// The stability test by tangent plane distance (M. L. Michelsen, Fluid Phase Equilibria 9 (1982) 1).
#pragma once

#include "Mixture.h"
#include "NewtonMinimum.h"
#include "PengRobinson.h"

namespace solvane::host {

/// A phase that a mixture might gain by forming, on its way to the least distance from the tangent plane. Can
/// be run again and again; mixture, equation and minimizer outlive it.
class TrialPhase final : GibbsObjective {
public:
    TrialPhase(const Mixture& mixture, const PengRobinson& equation, GibbsMinimizer& minimizer);

    /// Whether the mixture gains by forming a phase on the given root. `logFugacity` is ln(z phi) of the
    /// mixture in the tested state, at the equation's temperature.
    bool isBelowPlane(Root root, double pressure, const std::vector<double>& logFugacity);

    /// Amounts of the last run's phase per amount in the mixture, at or near the deepest point below the
    /// plane.
    const std::vector<double>& ratios();

private:
    void evaluate(std::span<const double> logAmounts, GibbsModel& model) override;
    void addCurvature(GibbsModel& model) override;
    bool isDecided(const GibbsModel& model, std::span<const double> logAmounts,
                   const GibbsStep& next) override;
    void start();

    const Mixture& mixture_;
    const PengRobinson& equation_;
    GibbsMinimizer& minimizer_;
    Root root_ = Root::stable;
    double pressure_ = 0;
    const std::vector<double>* logFugacity_ = nullptr;
    std::vector<double> logAmounts_;
    std::vector<double> ratios_;
    bool isMixture_ = false; ///< the trial phase turns out to be the mixture itself
    // At the last point:
    std::vector<double> composition_;
    double total_ = 0;
    Fugacity fugacity_;
};

} // namespace solvane::host
