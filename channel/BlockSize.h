/// The size of the block that a run shares with the gateway. Neither side sends it: the system rounds a block
/// up to whole pages, so that both go by the counts that they know.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace solvane {

/// Bytes of one phase of an equilibrium: its fraction, its index and its composition.
constexpr std::uint64_t bytesPerPhase(std::uint64_t compounds) {
    return 8 * compounds + 12;
}

/// Bytes of the block, in which a matrix of all compounds and an equilibrium of all phases fit. Materials of
/// version 1.0 have no list of `phases`: there is room for ten, with their names.
constexpr std::uint64_t blockSizeFor(std::uint64_t compounds, std::optional<std::uint64_t> phases) {
    constexpr std::uint64_t phasesOf10 = 10;
    constexpr std::uint64_t phaseNamesOf10 = 1024;
    const std::uint64_t equilibrium =
        bytesPerPhase(compounds) * phases.value_or(phasesOf10) + 8 + (phases ? 0 : phaseNamesOf10);
    return std::max({8 * compounds * compounds + 8, std::uint64_t{2048}, 64 * compounds + 8, equilibrium});
}

} // namespace solvane
