/// Jumps of a model's outputs: rounded numbers, tables that are not interpolated. Beside a jump a derivative
/// by differences is 0, and on it infinite.
#pragma once

#include "Trials.h"

#include <functional>
#include <optional>
#include <string>

namespace solvane::host {

/// By which part an input is changed to look for jumps.
inline constexpr double wideChange = 3e-2;

struct Jump {
    std::string output;
    double size = 0; ///< in parts of the output's scale
    double at = 0;   ///< the part by which the input is changed there
};

/// The first output that jumps between the unchanged input and the wide changes of it. `up` and `down` are
/// runs next to the unchanged input, at `farChange` and its opposite, whose line and parabola a smooth model
/// follows. `runAt` runs the case with the input changed by a part. Bends are no jumps, nor is the change of
/// a stream from liquid to vapour.
std::optional<Jump> findJump(const Trial& unchanged, const Trial& up, const Trial& down,
                             const std::function<Trial(double part)>& runAt);

} // namespace solvane::host
