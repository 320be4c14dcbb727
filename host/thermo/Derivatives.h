/// Derivatives of functions of temperature, pressure and the compositions of phases.
#pragma once

#include "Dual.h"
#include "PhaseProperty.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

namespace solvane::host {

/// Turns slopes to the fractions of one phase into those to its amounts: with x_i = n_i/N the one to n_j of f
/// is f_j - sum x_k f_k for one mole in all, plus f if f is per mole.
inline void toMoles(std::span<double> slopes, std::span<const double> fractions,
                    std::span<const double> values, bool molar) {
    const std::size_t rows = values.size();
    for (std::size_t row = 0; row < rows; ++row) {
        double mean = molar ? -values[row] : 0;
        for (std::size_t i = 0; i < fractions.size(); ++i) {
            // An absent compound contributes nothing, even if its own slope is infinite.
            mean += fractions[i] > 0 ? fractions[i] * slopes[i * rows + row] : 0;
        }
        for (std::size_t i = 0; i < fractions.size(); ++i)
            slopes[i * rows + row] -= mean;
    }
}

/// The values of `function(temperature, pressure, fractions)`, which takes double or Dual arguments, or their
/// derivative. `fractions` are those of one phase after the other, `count` each. Derivatives to amounts are
/// laid out as PropertyPackage returns them: all values for the first amount, then all for the next.
template <class Function>
std::vector<double> derived(const Function& function, Derivative derivative, double temperature,
                            double pressure, const std::vector<double>& fractions, std::size_t count,
                            bool molar) {
    std::vector<double> values = function(temperature, pressure, std::span<const double>(fractions));
    if (derivative == Derivative::none)
        return values;
    Dual t = temperature;
    Dual p = pressure;
    std::vector<Dual> x(fractions.begin(), fractions.end());
    std::vector<double> slopes;
    const auto addSlopes = [&](Dual& variable) {
        variable.slope = 1;
        std::ranges::transform(function(t, p, std::span<const Dual>(x)), std::back_inserter(slopes),
                               &Dual::slope);
        variable.slope = 0;
    };
    if (derivative == Derivative::temperature)
        addSlopes(t);
    else if (derivative == Derivative::pressure)
        addSlopes(p);
    else
        std::ranges::for_each(x, addSlopes);
    if (derivative == Derivative::moles) {
        const std::size_t block = count * values.size();
        for (std::size_t phase = 0; phase * count < fractions.size(); ++phase) {
            toMoles(std::span(slopes).subspan(phase * block, block),
                    std::span(fractions).subspan(phase * count, count), values, molar);
        }
    }
    return slopes;
}

} // namespace solvane::host
