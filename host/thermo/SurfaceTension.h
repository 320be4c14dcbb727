/// Surface tension between a vapour and a liquid.
#pragma once

#include "CubicParameters.h"

namespace solvane::host {

/// By the parachors (C. F. Weinaug, D. L. Katz, Ind. Eng. Chem. 35 (1943) 239), N/m. Volumes of the phases
/// are those of the equation of state, m3/mol. The phases may come in either order.
template <class Scalar>
Scalar surfaceTension(std::span<const Compound* const> compounds, Scalar firstVolume,
                      std::span<const Scalar> first, Scalar secondVolume, std::span<const Scalar> second) {
    const Scalar firstDensity = 1e-6 / translatedVolume(compounds, firstVolume, first); // mol/cm3
    const Scalar secondDensity = 1e-6 / translatedVolume(compounds, secondVolume, second);
    Scalar root = 0;
    for (std::size_t i = 0; i < compounds.size(); ++i)
        root += compounds[i]->parachor * (firstDensity * first[i] - secondDensity * second[i]);
    return 1e-3 * root * root * root * root;
}

} // namespace solvane::host
