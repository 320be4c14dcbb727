#include "Noise.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

constexpr double toleratedNoise = 1e-8;
/// Of what the far change does to the output, so that a step of it gives three digits of the derivative.
constexpr double toleratedPart = 1e-3;
constexpr double ratio = nearChange / farChange;

} // namespace

std::optional<Noise> findNoise(const Trial& unchanged,
                               const std::array<Trial, noiseChanges.size()>& changed) {
    std::optional<Noise> noisiest;
    for (std::size_t i = 0; i < unchanged.outputs.size(); ++i) {
        const Output& base = unchanged.outputs[i];
        std::array<double, noiseChanges.size()> step; // as noiseChanges
        std::ranges::transform(changed, step.begin(),
                               [&](const Trial& trial) { return trial.outputs.at(i).value - base.value; });
        const auto [nearUp, nearDown, farUp, farDown] = step;
        const double slope = (farUp - farDown) / 2, bend = (farUp + farDown) / 2;
        const auto remainder = [&](double nearStep, double farStep, double sign) {
            return std::min(std::abs(nearStep - ratio * farStep),
                            std::abs(nearStep - ratio * (sign * slope + ratio * bend)));
        };
        const double size =
            std::max(remainder(nearUp, farUp, 1), remainder(nearDown, farDown, -1)) / base.scale;
        const double effect = std::max(std::abs(farUp), std::abs(farDown)) / base.scale;
        if (size > std::max({toleratedNoise, toleratedPart * effect, noisiest ? noisiest->size : 0}))
            noisiest = {base.name, size};
    }
    return noisiest;
}

} // namespace solvane::host
