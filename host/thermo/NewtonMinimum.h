/// Minimisation of a Gibbs energy, shared by the stability test and the phase split.
#pragma once

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
    std::vector<double> curvature; ///< by rows, only the lower triangle
};

/// The step that comes next.
struct GibbsStep {
    std::vector<double> variables; ///< what the full step adds to them
    double change = 0;             ///< of the objective along the full step, to first order
    bool isNewton = false; ///< Newton's, by a positive curvature: the objective changes by about half of that
};

class GibbsObjective {
public:
    /// Everything but the curvature.
    virtual void evaluate(std::span<const double> variables, GibbsModel& model) = 0;
    /// The curvature of a model that is the last evaluated.
    virtual void addCurvature(GibbsModel& model) = 0;
    /// Whether enough is known without the next step.
    virtual bool isDecided(const GibbsModel& /*model*/, std::span<const double> /*variables*/,
                           const GibbsStep& /*next*/) {
        return false;
    }

protected:
    ~GibbsObjective() = default;
};

struct NewtonOutcome {
    double value = 0;
    double worstResidual = 0; ///< largest absolute value
};

/// The method, with storage that its runs share: allocations would cost more than the numbers.
class GibbsMinimizer {
public:
    /// Goes down from `variables` until the residuals vanish to about 1e-13 or no step helps any more: first
    /// by `substitutions` steps of the variables by minus the residuals (successive substitution), then by
    /// Newton steps, shifted towards these where the curvature is not positive. The objective never rises
    /// beyond rounding; its last evaluation is at the result. Ends early if the objective is decided.
    NewtonOutcome run(GibbsObjective& objective, int substitutions, std::vector<double>& variables);

private:
    bool newtonStep();

    GibbsModel model_;
    GibbsModel there_;
    std::vector<double> moved_;
    GibbsStep step_;
    std::vector<double> matrix_;
};

} // namespace solvane::host
