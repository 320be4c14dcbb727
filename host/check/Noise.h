/// The noise in a model's outputs, which spoils derivatives by differences and with them recycles.
#pragma once

#include "Trials.h"

#include <array>
#include <optional>
#include <string>

namespace solvane::host {

/// By which parts an input is changed, a near and a far pair.
inline constexpr double nearChange = 1e-6;
inline constexpr double farChange = 1e-4;
inline constexpr std::array noiseChanges{nearChange, -nearChange, farChange, -farChange};

struct Noise {
    std::string output;
    double size = 0; ///< in parts of the output's scale
};

/// The noisiest output above the noise that derivatives bear: what remains of the near changes after a line
/// through the far one on the same side, or a parabola through both, is taken off. A bend of the model at the
/// unchanged input is no noise. `changed` holds the runs at `noiseChanges`, which succeeded as the unchanged
/// one.
std::optional<Noise> findNoise(const Trial& unchanged, const std::array<Trial, noiseChanges.size()>& changed);

} // namespace solvane::host
