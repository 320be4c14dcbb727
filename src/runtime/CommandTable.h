#pragma once

#include <cstddef>
#include <span>

namespace solvane {

struct CalculationRun;

/// Carries out the command whose request is in the block, and writes its reply or the failure record there.
/// Throws nothing.
void carryOutCommand(CalculationRun& run, std::span<std::byte> block) noexcept;

} // namespace solvane
