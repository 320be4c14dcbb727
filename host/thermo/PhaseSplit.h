/// Which phases a mixture forms at a given temperature and pressure.
#pragma once

#include "Stability.h"
#include "TwoPhaseSearch.h"

namespace solvane::host {

/// Splits one mixture at any number of states. The mixture outlives it.
class PhaseSplitter {
public:
    explicit PhaseSplitter(const Mixture& mixture);
    PhaseSplitter(const PhaseSplitter&) = delete;
    PhaseSplitter& operator=(const PhaseSplitter&) = delete;

    /// The stable state: a vapour, a liquid, or both, vapour first. There is no second liquid: of two liquids
    /// that the equation would rather form (both denser than 1/(1.75 b)), the mixture stays one. A single
    /// phase is a vapour if its volume is greater than the equation's critical volume of the mixture, about
    /// 3.95 b, otherwise a liquid; so a dense supercritical fluid counts as liquid, a thin one as vapour.
    std::vector<PhaseState> split(double temperature, double pressure);

private:
    const Mixture& mixture_;
    PengRobinson equation_;
    GibbsMinimizer minimizer_;
    TrialPhase trial_;
    TwoPhaseSearch search_;
    std::vector<double> logFugacity_; ///< of the mixture as one phase
};

} // namespace solvane::host
