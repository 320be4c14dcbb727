#pragma once

namespace solvane {

/// The simulators that are told apart.
enum class HostKind { other = 0, aspenPlus = 1, hysys = 2, proII = 3, unisimDesign = 4, brume = 5 };

/// Which of them this process is, by the name of its program.
HostKind detectHost();

} // namespace solvane
