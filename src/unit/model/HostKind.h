#pragma once

namespace solvane {

/// The simulators that the unit distinguishes.
enum class HostKind { other = 0, aspenPlus = 1, hysys = 2, proII = 3, unisimDesign = 4, brume = 5 };

/// The simulator of this process, by the name of its program.
HostKind detectHost();

} // namespace solvane
