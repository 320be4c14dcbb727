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

std::vector<double> newtonStep(const GibbsModel& model) {
    const std::size_t n = model.residual.size();
    constexpr std::array shifts{0.0, 1e-3, 1e-2, 1e-1, 1.0, 10.0};
    for (double shift : shifts) {
        std::vector<double> matrix = model.curvature;
        std::vector<double> step(n);
        for (std::size_t i = 0; i < n; ++i) {
            matrix[i * n + i] += shift;
            step[i] = -model.residual[i] * model.scale[i];
        }
        if (solvePositiveDefinite(std::move(matrix), step)) {
            for (std::size_t i = 0; i < n; ++i)
                step[i] /= model.scale[i];
            return step;
        }
    }
    return {};
}

} // namespace

NewtonOutcome minimizeGibbs(const GibbsObjective& objective, int substitutions,
                            std::vector<double>& variables) {
    const std::size_t n = variables.size();
    GibbsModel model = objective(variables);
    for (int iteration = 0; iteration < maxIterations && largest(model.residual) > smallEnough; ++iteration) {
        std::vector<double> step;
        if (iteration >= substitutions)
            step = newtonStep(model);
        if (step.empty()) {
            step = model.residual;
            std::ranges::for_each(step, [](double& s) { s = -s; });
        }
        double slope = 0;
        for (std::size_t i = 0; i < n; ++i)
            slope += model.residual[i] * model.scale[i] * model.scale[i] * step[i];
        double length = std::min(1.0, longestStep / largest(step));
        const double worst = largest(model.residual);
        bool accepted = false;
        const int maxHalvings = worst < nearlySmallEnough ? 1 : 12;
        for (int halving = 0; halving < maxHalvings && !accepted; ++halving, length /= 2) {
            std::vector<double> moved(n);
            for (std::size_t i = 0; i < n; ++i)
                moved[i] = variables[i] + length * step[i];
            GibbsModel there = objective(moved);
            // If the objective's change is lost in rounding, the residuals decide.
            const bool lower = there.value <= model.value + 1e-4 * length * slope;
            const bool closer =
                there.value <= model.value + rounding * std::max(1.0, std::abs(model.value)) &&
                largest(there.residual) < worst;
            if (lower || closer) {
                variables = std::move(moved);
                model = std::move(there);
                accepted = true;
            }
        }
        if (!accepted || (worst < nearlySmallEnough && largest(model.residual) > worst / 2))
            break;
    }
    return {model.value, largest(model.residual)};
}

} // namespace solvane::host
