#include "NewtonMinimum.h"

#include "LinearAlgebra.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace solvane::host {

namespace {

constexpr int maxIterations = 100;
constexpr double smallEnough = 1e-13;
constexpr double nearlySmallEnough = 1e-10; ///< below this, every step must halve the residuals
constexpr double longestStep = 4.0;         ///< a factor of 55 in an amount
/// The rounding of the objective, relative to it or to 1, that the fugacities of cold dense liquids cause.
constexpr double rounding = 1e-11;

double largest(const std::vector<double>& values) {
    double result = 0;
    for (double value : values)
        result = std::max(result, std::abs(value));
    return result;
}

} // namespace

NewtonOutcome GibbsMinimizer::run(GibbsObjective& objective, int substitutions,
                                  std::vector<double>& variables) {
    const std::size_t n = variables.size();
    moved_.resize(n);
    objective.evaluate(variables, model_);
    double worst = largest(model_.residual);
    for (int iteration = 0; iteration < maxIterations && worst > smallEnough; ++iteration) {
        if (iteration >= substitutions)
            objective.addCurvature(model_);
        if (iteration < substitutions || !newtonStep()) {
            step_.variables = model_.residual;
            std::ranges::for_each(step_.variables, [](double& s) { s = -s; });
            step_.isNewton = false;
        }
        step_.change = 0;
        for (std::size_t i = 0; i < n; ++i)
            step_.change += model_.residual[i] * model_.scale[i] * model_.scale[i] * step_.variables[i];
        if (objective.isDecided(model_, variables, step_))
            break;
        double length = std::min(1.0, longestStep / largest(step_.variables));
        const double lastWorst = worst;
        bool accepted = false;
        const int maxHalvings = worst < nearlySmallEnough ? 1 : 12;
        for (int halving = 0; halving < maxHalvings && !accepted; ++halving, length /= 2) {
            for (std::size_t i = 0; i < n; ++i)
                moved_[i] = variables[i] + length * step_.variables[i];
            objective.evaluate(moved_, there_);
            const double worstThere = largest(there_.residual);
            // If the objective's change is lost in rounding, the residuals decide.
            const bool lower = there_.value <= model_.value + 1e-4 * length * step_.change;
            const bool closer =
                there_.value <= model_.value + rounding * std::max(1.0, std::abs(model_.value)) &&
                worstThere < worst;
            if (lower || closer) {
                std::swap(variables, moved_);
                std::swap(model_, there_);
                worst = worstThere;
                accepted = true;
            }
        }
        if (!accepted)
            objective.evaluate(variables, model_);
        if (!accepted || (lastWorst < nearlySmallEnough && worst > lastWorst / 2))
            break;
    }
    return {model_.value, worst};
}

/// False if no shift makes the curvature positive.
bool GibbsMinimizer::newtonStep() {
    const std::size_t n = model_.residual.size();
    constexpr std::array shifts{0.0, 1e-3, 1e-2, 1e-1, 1.0, 10.0};
    std::vector<double>& step = step_.variables;
    step.resize(n);
    for (double shift : shifts) {
        matrix_ = model_.curvature;
        for (std::size_t i = 0; i < n; ++i) {
            matrix_[i * n + i] += shift;
            step[i] = -model_.residual[i] * model_.scale[i];
        }
        if (solvePositiveDefinite(matrix_, step)) {
            for (std::size_t i = 0; i < n; ++i)
                step[i] /= model_.scale[i];
            step_.isNewton = shift == 0;
            return true;
        }
    }
    return false;
}

} // namespace solvane::host
