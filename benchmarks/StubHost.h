/// A host that answers at once and counts the time that its answers take.
#pragma once

#include "com/ComRef.h"

#include <oaidl.h>

#include <cstddef>
#include <cstdint>

namespace solvane {

/// Ticks of the processor's clock while a stub host's methods ran.
inline std::uint64_t stubHostTicks = 0;

/// A material of version 1.1 with that many compounds in two phases, vapor and liquid. It answers any
/// property with one value, or one for each compound for those that have as many, and takes any value.
ComRef<IDispatch> createStubMaterial(std::size_t compounds);

} // namespace solvane
