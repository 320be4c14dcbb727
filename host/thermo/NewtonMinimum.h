/// Minimisation of a Gibbs energy, shared by the stability test and the phase split.
#pragma once

#include <functional>
#include <span>
#include <vector>

namespace solvane::host {

/// An objective around one point. The variables are logarithms of amounts, so that no step leaves the allowed
/// range; `residual` is the objective's gradient to the amounts themselves (a difference of chemical
/// potentials over RT, which must vanish), `scale` the square root of the amounts' derivatives to the
/// variables, and `curvature` the objective's second derivatives to the amounts, multiplied from both sides
/// by `scale`. In these measures an ideal solution's curvature is about the unit matrix, for traces as well.
struct GibbsModel {
    double value = 0;
    std::vector<double> residual;
    std::vector<double> scale;
    std::vector<double> curvature;
};

using GibbsObjective = std::function<GibbsModel(std::span<const double> variables)>;

struct NewtonOutcome {
    double value = 0;
    double worstResidual = 0; ///< largest absolute value
};

/// Goes down from `variables` until the residuals vanish to about 1e-13 or no step helps any more: first
/// by `substitutions` steps of the variables by minus the residuals (successive substitution), then by Newton
/// steps, shifted towards these where the curvature is not positive. The objective never rises beyond
/// rounding.
NewtonOutcome minimizeGibbs(const GibbsObjective& objective, int substitutions,
                            std::vector<double>& variables);

} // namespace solvane::host
